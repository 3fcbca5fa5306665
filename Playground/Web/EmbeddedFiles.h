#pragma once

#include <string_view>

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
