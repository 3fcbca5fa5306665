#pragma once

#include <string>
#include <string_view>

namespace velko::web {

inline constexpr std::string_view pagePath = "/";
inline constexpr std::string_view eventsPath = "/events";
inline constexpr std::string_view ticketPath = "/open";
inline constexpr std::string_view pageType = "text/html; charset=utf-8";

/// The address of a path, with the token in it.
[[nodiscard]] std::string withToken(std::string_view path, std::string_view token);

/// A file of the page. It is part of the program and the same for everybody.
struct File {
    std::string_view path;
    std::string_view type;
    std::string_view content;
};

/// The file at a path; null if there is none.
[[nodiscard]] const File* fileAt(std::string_view path);

/// The page. It contains the token of this run and the pictures of the symbols.
[[nodiscard]] std::string pageWith(std::string_view token);

/// The page for a visitor without the token. `matter` is its first line and says what is wrong; the rest says
/// where to find the token.
[[nodiscard]] std::string lockedPage(std::string_view matter);

}  // namespace velko::web

/// The files of `Playground/Page`. The build puts them into the program.
namespace velko::web::embedded {

extern const std::string_view page_html;
extern const std::string_view locked_html;
extern const std::string_view locked_css;
extern const std::string_view page_css;
extern const std::string_view page_js;
extern const std::string_view desk_js;
extern const std::string_view link_js;
extern const std::string_view lists_js;
extern const std::string_view menus_js;
extern const std::string_view morph_js;
extern const std::string_view surfaces_js;
extern const std::string_view windows_js;
extern const std::string_view glyphs_svg;
extern const std::string_view icon_svg;

}  // namespace velko::web::embedded
