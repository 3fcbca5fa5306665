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
            {.id = "deaf", .content = view::Picker{.options = {"a"}}}};
    };
    const std::vector<std::pair<view::Input, std::vector<std::string>>> inputs{
        {{}, {"button pressed"}},
        {true, {"toggle on"}},
        {false, {"toggle off"}},
        {std::int64_t{-1}, {}},
        {std::int64_t{0}, {"picker 0", "pages 0"}},
        {std::int64_t{1}, {"picker 1", "pages 1"}},
        {std::int64_t{2}, {"pages 2"}},
        {std::int64_t{3}, {}},
        {BundleID("app"), {"group app"}}};
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
