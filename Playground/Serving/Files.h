#pragma once

#include <string>
#include <string_view>

namespace velko::web {

inline constexpr std::string_view pagePath = "/";
inline constexpr std::string_view eventsPath = "/events";
inline constexpr std::string_view ticketPath = "/open";
inline constexpr std::string_view pageType = "text/html; charset=utf-8";

/// A path as an address carries it together with a token.
[[nodiscard]] std::string withToken(std::string_view path, std::string_view token);

/// A file that the page is made of, the same for everybody. It is part of the program.
struct File {
    std::string_view path;
    std::string_view type;
    std::string_view content;
};

/// The file at a path; null where there is none.
[[nodiscard]] const File* fileAt(std::string_view path);

/// The page with this run's token and the pictures of the symbols in it.
[[nodiscard]] std::string pageWith(std::string_view token);

/// What those see who come without the token: where to find it, below a line that says what is the matter.
[[nodiscard]] std::string lockedPage(std::string_view matter);

}  // namespace velko::web

/// The files of `Playground/Page`, as the build has put them into the program.
namespace velko::web::embedded {

extern const std::string_view page_html;
extern const std::string_view locked_html;
extern const std::string_view locked_css;
extern const std::string_view page_css;
extern const std::string_view page_js;
extern const std::string_view desk_js;
extern const std::string_view link_js;
extern const std::string_view menus_js;
extern const std::string_view morph_js;
extern const std::string_view surfaces_js;
extern const std::string_view windows_js;
extern const std::string_view glyphs_svg;
extern const std::string_view icon_svg;

}  // namespace velko::web::embedded
