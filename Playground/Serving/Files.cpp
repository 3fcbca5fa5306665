#include "Playground/Serving/Files.h"

#include <algorithm>
#include <array>

namespace velko::web {

namespace {

constexpr std::string_view tokenMark = "{{token}}";
constexpr std::string_view glyphsMark = "{{glyphs}}";
constexpr std::string_view matterMark = "{{matter}}";

void replace(std::string& text, std::string_view mark, std::string_view by) {
    if (const auto place = text.find(mark); place != std::string::npos) {
        text.replace(place, mark.size(), by);
    }
}

}  // namespace

std::string withToken(std::string_view path, std::string_view token) {
    return std::string(path) + "?token=" + std::string(token);
}

const File* fileAt(std::string_view path) {
    static constexpr std::string_view script = "text/javascript; charset=utf-8";
    static const std::array files{
        File{.path = "/page.css", .type = "text/css; charset=utf-8", .content = embedded::page_css},
        File{.path = "/locked.css", .type = "text/css; charset=utf-8", .content = embedded::locked_css},
        File{.path = "/page.js", .type = script, .content = embedded::page_js},
        File{.path = "/desk.js", .type = script, .content = embedded::desk_js},
        File{.path = "/link.js", .type = script, .content = embedded::link_js},
        File{.path = "/menus.js", .type = script, .content = embedded::menus_js},
        File{.path = "/morph.js", .type = script, .content = embedded::morph_js},
        File{.path = "/surfaces.js", .type = script, .content = embedded::surfaces_js},
        File{.path = "/windows.js", .type = script, .content = embedded::windows_js},
        File{.path = "/icon.svg", .type = "image/svg+xml", .content = embedded::icon_svg},
    };
    const auto* const file = std::ranges::find(files, path, &File::path);
    return file == files.end() ? nullptr : file;
}

std::string pageWith(std::string_view token) {
    std::string page(embedded::page_html);
    replace(page, tokenMark, token);
    replace(page, glyphsMark, embedded::glyphs_svg);
    return page;
}

std::string lockedPage(std::string_view matter) {
    std::string page(embedded::locked_html);
    replace(page, matterMark, matter);
    return page;
}

}  // namespace velko::web
