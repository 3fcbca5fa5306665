#include <gtest/gtest.h>
#include <set>
#include <string>

#include "Playground/Html/Images.h"
#include "Playground/Html/Markup.h"
#include "Playground/Html/Views.h"

namespace velko::html {
namespace {

constexpr auto hostile = "<img src=x onerror=alert(1)>\"'&\x01\xFF";

const NameOf& names() {
    static const NameOf function = [](const BundleID& bundleID) { return "App " + bundleID; };
    return function;
}

std::string markup(const view::Node& node) {
    return treeMarkup(node, {.surface = "note", .nameOf = names()});
}

/// One of each control, with that text in every place where an app or a user can give one.
view::Node everyControl(const std::string& text) {
    view::Stack all;
    all.children = {
        {.id = "button", .label = text, .help = text, .content = view::Button{.symbol = "eye"}},
        {.id = "toggle", .content = view::Toggle{.title = text}},
        {.id = "picker", .content = view::Picker{.title = text, .options = {text, "b"}, .selected = 1}},
        {.id = "segments",
         .label = text,
         .content = view::Picker{.options = {text}, .style = view::Picker::Style::segmented}},
        {.id = "more", .content = view::MenuButton{.title = text}},
        {.id = "tile:" + text, .content = view::Tile{.bundleID = text, .name = text, .badge = text}},
        {.id = "search", .content = view::SearchField{.text = text, .placeholder = text, .drives = "list"}},
        {.id = "list",
         .label = text,
         .content = view::List{.selected = {"row:" + text},
                               .children = {view::text("row:" + text, text), view::text("row", text)}}},
        {.id = "more-of-it",
         .content = view::Disclosure{.title = text, .isOpen = true, .children = {view::text("in", text)}}},
        {.id = "progress", .label = text, .content = view::Progress{.value = 0.375}},
        {.id = "pages", .label = text, .content = view::Pages{.tabs = {{.title = text}}, .children = {}}},
    };
    return {.id = "all", .content = std::move(all)};
}

std::size_t count(const std::string& text, std::string_view part) {
    std::size_t found = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++found;
    }
    return found;
}

TEST(Html, WritesNoTextAsMarkup) {
    EXPECT_EQ(escaped("<b a=\"1\" b='2'>&\n"), "&lt;b a=&quot;1&quot; b=&#39;2&#39;&gt;&amp;\n");
    EXPECT_EQ(escaped("\x01\xFF\x7F"), "\uFFFD\uFFFD\uFFFD");
    const std::string page =
        markup(everyControl(hostile)) +
        menuMarkup({{.title = hostile, .help = hostile, .appIcon = hostile, .submenu = {{.title = hostile}}},
                    view::MenuItem::header(hostile)},
                   names()) +
        barGlyph(hostile, hostile);
    EXPECT_EQ(page.find("<img"), std::string::npos);
    EXPECT_EQ(page.find("\"'"), std::string::npos);
    EXPECT_EQ(page.find('\x01'), std::string::npos);
    EXPECT_EQ(page.find('\xFF'), std::string::npos);
}

TEST(Html, GivesEveryControlItsIdAndAName) {
    const std::string page = markup(everyControl("Named"));
    for (const auto* id : {"button", "toggle", "picker", "segments", "more", "tile:Named", "search", "list",
                           "more-of-it", "progress", "pages"}) {
        EXPECT_EQ(count(page, "data-id=\"" + std::string(id) + "\""), 1U) << id;
    }
    const auto start = [&page](std::string_view id) {
        const auto at = page.find("data-id=\"" + std::string(id));
        return page.substr(page.rfind('<', at), 400);
    };
    for (const auto* id : {"button", "picker", "segments", "search", "list", "progress", "pages"}) {
        EXPECT_NE(start(id).find("aria-label=\"Named\""), std::string::npos) << start(id);
    }
    EXPECT_NE(start("tile:").find("aria-label=\"Named, Named\""), std::string::npos) << start("tile:");
    for (const auto* id : {"toggle", "more"}) {
        EXPECT_NE(start(id).find(">Named</span>"), std::string::npos) << start(id);
    }
}

TEST(Html, ShowsWhatIsChosenAndWhatIsDisabled) {
    const std::string page = markup(everyControl("x"));
    EXPECT_NE(page.find("<option value=\"1\" selected=\"\">b</option>"), std::string::npos);
    EXPECT_EQ(count(page, "disabled="), 0U);
    view::Node off{.id = "off", .isEnabled = false, .content = view::Toggle{.title = "Off", .isOn = true}};
    EXPECT_NE(markup(off).find("checked=\"\" disabled=\"\""), std::string::npos);
    view::Picker open{.options = {"a", "b"}, .style = view::Picker::Style::segmented};
    EXPECT_EQ(count(markup({.id = "open", .content = open}), "checked="), 1U);
    open.selected = view::Picker::nothing;
    EXPECT_EQ(count(markup({.id = "open", .content = open}), "checked="), 0U);
}

TEST(Html, TellsScreenReadersWhatAListHolds) {
    view::Node heading = view::text("heading", "Recent");
    heading.isEnabled = false;
    const view::List list{.selection = view::List::Selection::several,
                          .selected = {"a"},
                          .children = {heading, view::text("a", "A"), view::text("b", "B")}};
    const std::string page = markup({.id = "list", .label = "Apps", .content = list});
    EXPECT_NE(page.find("aria-multiselectable=\"true\""), std::string::npos);
    EXPECT_NE(page.find("aria-activedescendant=\"note/a\""), std::string::npos);
    EXPECT_NE(page.find(R"(data-row="a" aria-label="A" aria-selected="true")"), std::string::npos) << page;
    EXPECT_EQ(count(page, "data-row="), 2U) << "a heading is no row to select";
    EXPECT_EQ(count(page, "aria-selected=\"true\""), 1U);
    EXPECT_NE(markup(everyControl("x")).find("aria-controls=\"note/list\""), std::string::npos);
    EXPECT_NE(markup(everyControl("x")).find("aria-valuenow=\"38\""), std::string::npos);
}

TEST(Html, TellsThePlaceOfEveryLineOfAMenu) {
    const view::Menu menu{
        {.title = "Hm", .help = "Why", .isEnabled = false},
        view::MenuItem::separator(),
        {.title = "Open", .submenu = {view::MenuItem::header("Tucked"), {.title = "Slack"}}}};
    const std::string page = menuMarkup(menu, names());
    EXPECT_NE(page.find(R"(data-place="0" aria-label="Hm" title="Why" aria-disabled="true")"),
              std::string::npos)
        << page;
    EXPECT_NE(page.find(R"(data-place="2.1" aria-label="Slack")"), std::string::npos) << page;
    EXPECT_EQ(page.find(R"(data-place="1")"), std::string::npos) << page;
}

TEST(Html, LettersTilesByTheNameInWholeCharacters) {
    EXPECT_EQ(initials("Options+"), "Op");
    EXPECT_EQ(initials("Google  Drive"), "GD");
    EXPECT_EQ(initials("\u00C9t\u00E9"), "\u00C9t");
    EXPECT_EQ(initials("\u65E5\u672C"), "\u65E5\u672C");
    EXPECT_EQ(initials("  "), "?");
    EXPECT_EQ(initials("\xE6"), "\uFFFD");
    EXPECT_EQ(hue("com.example.app"), hue("com.example.app"));
}

TEST(Images, DrawsEachShapeInItsInkWithoutExponentsOrEndlessFractions) {
    using Kind = view::PathCommand::Kind;
    const view::Drawing drawing{.size = {.width = 18, .height = 9},
                                .shapes = {{.path = {{.kind = Kind::moveTo, .to = {.x = 1.0 / 3, .y = -1e-9}},
                                                     {.kind = Kind::curveTo,
                                                      .to = {.x = 5, .y = 6},
                                                      .control1 = {.x = 1, .y = 2},
                                                      .control2 = {.x = 3, .y = 4}},
                                                     {.kind = Kind::close}},
                                            .ink = view::Ink::straw,
                                            .opacity = 0.5},
                                           {.path = {{.kind = Kind::moveTo, .to = {}},
                                                     {.kind = Kind::lineTo, .to = {.x = 7, .y = 8}}},
                                            .ink = view::Ink::wood,
                                            .strokeWidth = 1.5}}};
    EXPECT_EQ(svg(drawing, 2),
              R"(<svg xmlns="http://www.w3.org/2000/svg" width="36" height="18" viewBox="0 0 18 9")"
              R"( aria-hidden="true"><path class="ink-straw" fill="currentColor" opacity="0.5")"
              R"( d="M0.333 0C1 2 3 4 5 6Z"/><path class="ink-wood" fill="none")"
              R"( stroke="currentColor" stroke-linecap="round" stroke-linejoin="round" stroke-width="1.5")"
              R"( d="M0 0L7 8"/></svg>)");
}

}  // namespace
}  // namespace velko::html
