#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "Velko/Ports/Panels.h"
#include "Velko/View/Node.h"
#include "Velko/View/Tree.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

TEST(PanelPlacement, HangsAPanelBelowItsAnchorAndKeepsItWithinItsBounds) {
    constexpr Rect bounds{.x = 8, .y = 8, .width = 984, .height = 760};
    const auto frame = [&](double x, Size panel) {
        return panelFrame({.anchor = {.x = x, .y = 768, .width = 20, .height = 30}, .bounds = bounds}, panel);
    };
    constexpr Size size{.width = 200, .height = 100};
    EXPECT_EQ(frame(490, size), (Rect{.x = 400, .y = 668, .width = 200, .height = 100}));
    EXPECT_EQ(frame(0, size).x, 8);
    EXPECT_EQ(frame(980, size).x, 792);
    // A panel that is too large for its bounds stays at their lower left corner.
    EXPECT_EQ(frame(490, {.width = 1200, .height = 900}),
              (Rect{.x = 8, .y = 8, .width = 1200, .height = 900}));
}

TEST(PanelPlacement, PointsTheArrowAtTheAnchorAndSlidesOutFromUnderTheBar) {
    Surface::Place place{.anchor = {.x = 900, .y = 800, .width = 30, .height = 24},
                         .bounds = {.x = 0, .y = 0, .width = 1000, .height = 800}};
    const Rect frame = panelFrame(place, {.width = 400, .height = 200});
    EXPECT_EQ(frame.x, 600) << "moved as little as its bounds ask";
    EXPECT_EQ(frame.x + panelArrowTip(place, frame), 915);
    place.anchor.x = 985;
    EXPECT_EQ(panelArrowTip(place, frame), 400 - 14 - 11) << "no farther than its round corner";
    place.shift = -100;
    EXPECT_EQ(panelFrame(place, {.width = 400, .height = 200}).x, 600);
    for (const double position : {0.0, 0.5, 1.0, 1.05}) {
        EXPECT_EQ(panelSlidOut(frame, position).maxY(), frame.maxY()) << "never over the bar";
    }
    EXPECT_EQ(panelSlidOut(frame, 1), frame);
    EXPECT_GT(panelSlidOut(frame, 0).y, frame.y);
}

TEST(SpringCurve, ComesToRestWhereItSaysAndOvershootsOnlyWhenLoose) {
    for (const double damping : {0.0, 0.3, 0.72, 0.99, 1.0, 5.0}) {
        const SpringCurve spring(420ms, damping);
        EXPECT_EQ(spring.at(0s), 0) << damping;
        EXPECT_EQ(spring.at(spring.duration()), 1);
        double highest = 0;
        for (Timing::Seconds time{}; time < 2 * spring.duration(); time += 1ms) {
            highest = std::max(highest, spring.at(time));
        }
        EXPECT_EQ(highest > 1.001, damping < 0.9) << damping;
        EXPECT_NEAR(spring.at(spring.duration() * 0.999), 1, 0.002) << damping;
    }
    EXPECT_EQ(SpringCurve(0s, 1).duration(), 0s);
    EXPECT_EQ(SpringCurve(-1s, 1).at(0s), 1);
}

TEST(Keyboard, PressesTheFirstEnabledButtonThatListens) {
    using view::Shortcut;
    std::string pressed;
    const auto button = [&](const std::string& id, Shortcut shortcut) {
        return view::button(id, {.shortcut = shortcut, .press = [&pressed, id] { pressed += id; }});
    };
    const Shortcut enter{.key = Shortcut::Key::enter};
    const Shortcut tuck{.key = Shortcut::Key::character, .character = 't'};
    view::Node root = view::row("root", {button("off", enter), button("a", enter), button("b", enter),
                                         button("t", tuck), button("none", {})});
    std::get<view::Stack>(root.content).children.front().isEnabled = false;
    EXPECT_TRUE(view::pressKey(root, enter));
    EXPECT_TRUE(view::pressKey(root, tuck));
    EXPECT_TRUE(view::pressKey(root, tuck, true)) << "taken, so that nobody else gets it";
    EXPECT_EQ(pressed, "at");
    EXPECT_FALSE(view::pressKey(root, {}));
    EXPECT_FALSE(view::pressKey(root, {.key = Shortcut::Key::escape}));
}

TEST(Tree, TakesOnlyWhatAControlOffersAndIsEnabledFor) {
    std::string done;
    const auto count = [&done](std::size_t place) { done = std::to_string(place); };
    const auto children = [&] {
        return std::vector<view::Node>{
            view::button("button", {.press = [&done] { done = "pressed"; }}),
            {.id = "toggle",
             .content = view::Toggle{.change = [&done](bool on) { done = on ? "on" : "off"; }}},
            {.id = "picker", .content = view::Picker{.options = {"a", "b"}, .choose = count}},
            {.id = "pages", .content = view::Pages{.tabs = {{}, {}, {}}, .choose = count, .children = {}}},
            {.id = "group",
             .content =
                 view::Group{
                     .title = "Group", .children = {}, .drop = [&done](const BundleID& app) { done = app; }}},
            {.id = "deaf", .content = view::Picker{.options = {"a"}}},
            {.id = "field",
             .content = view::SearchField{.change = [&done](const std::string& text) { done = text; }}},
            {.id = "disclosure",
             .content = view::Disclosure{.change = [&done](bool isOpen) { done = isOpen ? "on" : "off"; },
                                         .children = {}}}};
    };
    const std::vector<std::pair<view::Input, std::vector<std::string>>> inputs{
        {{}, {"button pressed"}},
        {true, {"toggle on", "disclosure on"}},
        {false, {"toggle off", "disclosure off"}},
        {std::int64_t{-1}, {}},
        {std::int64_t{0}, {"picker 0", "pages 0"}},
        {std::int64_t{1}, {"picker 1", "pages 1"}},
        {std::int64_t{2}, {"pages 2"}},
        {std::int64_t{3}, {}},
        {BundleID("app"), {"group app", "field app"}},
        {view::KeyPress{}, {}}};
    for (std::size_t input = 0; input < inputs.size(); ++input) {
        std::vector<std::string> taken;
        view::Node root = view::column("root", children());
        for (view::Node& node : std::get<view::Stack>(root.content).children) {
            if (view::perform(root, node.id, inputs[input].first)) {
                taken.push_back(node.id + " " + done);
            }
            node.isEnabled = false;
            EXPECT_FALSE(view::perform(root, node.id, inputs[input].first)) << node.id;
        }
        EXPECT_EQ(taken, inputs[input].second) << "input " << input;
        EXPECT_FALSE(view::perform(root, "none", inputs[input].first));
    }
}

/// A list of a heading and three rows, and a field that works it.
class ListTest : public testing::Test {
 protected:
    [[nodiscard]] view::Node tree() {
        view::Node heading = view::text("heading", "Recent");
        heading.isEnabled = false;
        return view::column(
            "root", {{.id = "field",
                      .content = view::SearchField{
                          .text = written,
                          .drives = "list",
                          .change = [this](const std::string& text) { written = text; },
                          .key = [this](const view::KeyPress& key) { return key == ownKey; }}},
                     {.id = "list",
                      .label = "List",
                      .content = view::List{.selection = selection,
                                            .selected = selected,
                                            .children = {std::move(heading), view::text("a", "A"),
                                                         view::text("b", "B"), view::text("c", "C")},
                                            .select = [this](const view::RowIDs& rows) { selected = rows; },
                                            .activate = [this](const std::string& row) { activated += row; },
                                            .menu =
                                                [this](const view::RowIDs& rows) {
                                                    about = rows;
                                                    return view::Menu{{.title = "Entry"}};
                                                }}}});
    }
    bool press(const view::KeyPress& key) { return view::perform(tree(), "field", key); }

    using Key = view::KeyPress::Key;
    std::string written;
    std::string activated;
    view::RowIDs selected;
    view::RowIDs about;
    view::List::Selection selection = view::List::Selection::one;
    view::KeyPress ownKey{.key = Key::enter, .option = true};
};

TEST_F(ListTest, SelectsOnlyRowsThatCanBeSelectedAndNoMoreThanAllowed) {
    const auto select = [this](const view::RowIDs& rows) {
        return view::perform(tree(), "list", view::Selected{.rows = rows});
    };
    EXPECT_TRUE(select({"b"}));
    EXPECT_FALSE(select({"a", "b"}));
    EXPECT_FALSE(select({"heading"}));
    EXPECT_FALSE(select({"gone"}));
    EXPECT_EQ(selected, view::RowIDs{"b"});
    EXPECT_FALSE(view::perform(tree(), "list", view::Activated{.row = "heading"}));
    EXPECT_TRUE(view::perform(tree(), "list", view::Activated{.row = "c"}));
    EXPECT_EQ(activated, "c");
    selection = view::List::Selection::several;
    EXPECT_TRUE(select({"a", "b"}));
    EXPECT_EQ(view::menuOf(tree(), "list", "b").size(), 1U);
    EXPECT_EQ(about, (view::RowIDs{"a", "b"})) << "the menu of a selected row is about the selection";
    EXPECT_EQ(view::menuOf(tree(), "list", "c").size(), 1U);
    EXPECT_EQ(about, view::RowIDs{"c"});
    EXPECT_TRUE(select({}));
    EXPECT_TRUE(selected.empty());
}

TEST_F(ListTest, IsWorkedFromTheFieldBesideIt) {
    EXPECT_FALSE(press({.key = Key::enter})) << "nothing is selected";
    EXPECT_TRUE(press({.key = Key::down}));
    EXPECT_EQ(selected, view::RowIDs{"a"}) << "not the heading";
    EXPECT_TRUE(press({.key = Key::down}));
    EXPECT_TRUE(press({.key = Key::enter}));
    EXPECT_EQ(activated, "b");
    EXPECT_TRUE(press({.key = Key::down}));
    EXPECT_TRUE(press({.key = Key::down}));
    EXPECT_EQ(selected, view::RowIDs{"c"}) << "the last one stays";
    selected.clear();
    EXPECT_TRUE(press({.key = Key::up}));
    EXPECT_EQ(selected, view::RowIDs{"c"});
    selected = {"a", "b"};
    EXPECT_TRUE(press({.key = Key::up}));
    EXPECT_EQ(selected, view::RowIDs{"a"});
    selected = {"a", "b"};
    EXPECT_FALSE(press({.key = Key::enter})) << "which one?";
    EXPECT_FALSE(press({.key = Key::down, .shift = true})) << "that selects text";
    EXPECT_TRUE(press(ownKey));
    EXPECT_FALSE(press({.key = Key::escape})) << "it is for the surface";
    written = "sl";
    EXPECT_TRUE(press({.key = Key::escape}));
    EXPECT_EQ(written, "");
}

TEST(Tree, HidesWhatAClosedDisclosureHolds) {
    view::Node node{.id = "more",
                    .content = view::Disclosure{.title = "More", .children = {view::text("in", "In")}}};
    EXPECT_EQ(view::find(node, "in"), nullptr);
    std::get<view::Disclosure>(node.content).isOpen = true;
    EXPECT_NE(view::find(node, "in"), nullptr);
    EXPECT_EQ(view::pageTitle(node), "");
    const view::Pages pages{.tabs = {{.title = "A"}, {.title = "B"}},
                            .selected = 1,
                            .style = view::Pages::Style::toolbar,
                            .children = {}};
    EXPECT_EQ(view::pageTitle(view::row("root", {{.id = "pages", .content = pages}})), "B");
}

TEST(Keyboard, WalksFromTileToTile) {
    using view::Arrow;
    const auto row = [](const std::string& id, const std::vector<std::string>& tiles) {
        std::vector<view::Node> nodes;
        nodes.reserve(tiles.size());
        for (const std::string& tile : tiles) {
            nodes.push_back({.id = tile, .isEnabled = tile != "off", .content = view::Tile{}});
        }
        return view::row(id, std::move(nodes));
    };
    const view::Node root = view::column(
        "root", {view::text("title", "Tucked"), row("1", {"a", "b", "c"}), row("2", {"off", "d", "e"})});
    const struct {
        const char* from;
        Arrow arrow;
        std::optional<std::string> to;
    } cases[] = {
        {"", Arrow::left, "a"},
        {"title", Arrow::down, "a"},
        {"a", Arrow::right, "b"},
        {"c", Arrow::right, "d"},
        {"d", Arrow::left, "c"},
        {"c", Arrow::down, "e"},
        {"e", Arrow::up, "b"},
        {"a", Arrow::up, std::nullopt},
        {"a", Arrow::left, std::nullopt},
        {"e", Arrow::right, std::nullopt},
        {"d", Arrow::down, std::nullopt},
    };
    for (const auto& [from, arrow, to] : cases) {
        EXPECT_EQ(view::tileBeside(root, from, arrow), to) << from;
    }
    EXPECT_EQ(view::tileBeside(view::row("none", {}), "", Arrow::down), std::nullopt);
}

}  // namespace
}  // namespace velko
