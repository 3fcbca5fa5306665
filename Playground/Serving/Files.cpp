#include "Playground/Serving/Files.h"

#include <algorithm>
#include <array>

#include "Playground/Html/Markup.h"
#include "Velko/Ports/Surfaces.h"

namespace velko::web {

namespace {

constexpr std::string_view tokenMark = "{{token}}";
constexpr std::string_view glyphsMark = "{{glyphs}}";
constexpr std::string_view surfacesMark = "{{surfaces}}";
constexpr std::string_view matterMark = "{{matter}}";

void replace(std::string& text, std::string_view mark, std::string_view by) {
    if (const auto place = text.find(mark); place != std::string::npos) {
        text.replace(place, mark.size(), by);
    }
}

/// The style of a surface in page.css.
std::string_view styleClass(Surfaces::Form form) {
    using Form = Surfaces::Form;
    switch (form) {
        case Form::window: return "window";
        case Form::panel: return "shelf";
        case Form::panelWithArrow: return "popover";
        case Form::quietPanel: return "panel";
    }
    return "window";
}

/// An empty element for each surface, the rearmost first.
std::string surfaceElements() {
    using Form = Surfaces::Form;
    std::string markup;
    for (const Form form : {Form::window, Form::quietPanel, Form::panel, Form::panelWithArrow}) {
        for (const Surfaces::Traits& surface : Surfaces::all()) {
            if (surface.form != form) {
                continue;
            }
            const std::string name(surface.name);
            markup += html::element(
                "div", {{"class", "surface " + std::string(styleClass(form))},
                        {"data-surface", name},
                        {"data-region", "surface-" + name},
                        {"role", "dialog"},
                        {"tabindex", "-1"},
                        {"aria-label", surface.title.empty() ? name : std::string(surface.title)},
                        html::Attribute::flag("hidden", true)});
        }
    }
    return markup;
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
        File{.path = "/lists.js", .type = script, .content = embedded::lists_js},
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
    replace(page, surfacesMark, surfaceElements());
    return page;
}

std::string lockedPage(std::string_view matter) {
    std::string page(embedded::locked_html);
    replace(page, matterMark, matter);
    return page;
}

}  // namespace velko::web
