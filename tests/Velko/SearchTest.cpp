#include <gmock/gmock.h>

#include "Simulator/Accessibility/SimulatedElement.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Velko/Search/SearchController.h"
#include "tests/Velko/FacesOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class SearchTest : public FacesOnMac {
 protected:
    using Key = view::KeyPress::Key;

    SearchTest() : FacesOnMac({.displays = {SimulatedDisplays::notched()}}) {}
    ~SearchTest() override { mac.surfaces.forget(); }

    ProcessID launch(const BundleID& bundleID, const std::string& name, Section section) {
        layout.place(bundleID, section);
        return launchNamed(bundleID, name);
    }
    void open(const std::string& typed = {}) {
        search.emplace(faceParts(), *broom);
        search->show(typed);
    }
    [[nodiscard]] bool type(const std::string& text) { return panel.perform("field", text); }
    bool press(const view::KeyPress& key) {
        const bool isUsed = panel.perform("field", key);
        pass(200ms);
        return isUsed;
    }
    [[nodiscard]] std::vector<std::string> rows() const {
        audit(*panel.content());
        std::vector<std::string> labels;
        for (const view::Node& row : view::childrenOf(*view::find(*panel.content(), "list"))) {
            labels.push_back(view::spoken(row));
        }
        return labels;
    }
    [[nodiscard]] std::string selected() const {
        const auto& list = std::get<view::List>(view::find(*panel.content(), "list")->content);
        return list.selected.empty() ? "" : *list.selected.begin();
    }
    [[nodiscard]] std::string says(std::string_view id) const {
        const view::Node* const node = view::find(*panel.content(), id);
        return node == nullptr ? "" : view::spoken(*node);
    }

    SimulatedSurface& panel = mac.surfaces.surface(Surfaces::Kind::search);
    std::optional<SearchController> search;
};

TEST_F(SearchTest, FindsEveryAppInTheBarWhateverItsSectionAndAsksNobody) {
    launch("app.drive", "Google Drive", Section::tucked);
    launch("app.dropbox", "Dropbox", Section::buried);
    launch("app.slack", "Slack", Section::bar);
    layout.place("app.new", Section::tucked);
    layout.inbox = {"app.new"};
    launchNamed("app.new", "Éclair");
    layout.lastClicked["app.slack"] = Date(std::chrono::days(20'000));
    startFaces();
    open();
    EXPECT_THAT(rows(), ElementsAre("Slack, In the bar", "Dropbox, Buried", "Éclair, Tucked, New",
                                    "Google Drive, Tucked"));
    EXPECT_EQ(selected(), "app:app.slack");
    const auto before = mac.cost();
    EXPECT_TRUE(type("dr"));
    EXPECT_THAT(rows(), ElementsAre("Dropbox, Buried", "Google Drive, Tucked"));
    EXPECT_TRUE(type("gd"));
    EXPECT_THAT(rows(), ElementsAre("Google Drive, Tucked"));
    EXPECT_TRUE(type("ECL"));
    EXPECT_THAT(rows(), ElementsAre("Éclair, Tucked, New"));
    EXPECT_TRUE(type("nobody"));
    EXPECT_THAT(rows(), IsEmpty());
    EXPECT_EQ(says("none"), "No app in the menu bar has that name.");
    EXPECT_EQ(mac.cost(), before) << "a keystroke asks nobody";
    pass(600ms);
    EXPECT_EQ(mac.surfaces.announcements(), std::vector<std::string>{"No results"})
        << "after the last key only";
    EXPECT_TRUE(type("dr"));
    pass(600ms);
    EXPECT_EQ(mac.surfaces.announcements().back(), "2 results. Dropbox, Buried");
    EXPECT_TRUE(type("nobody"));
    EXPECT_FALSE(press({.key = Key::enter}));
    search->show("s");
    EXPECT_THAT(rows(), ElementsAre("Slack, In the bar")) << "the open panel takes over the text";
    search->show("");
    EXPECT_EQ(selected(), "app:app.slack") << "the best match";
    EXPECT_TRUE(press({.key = Key::down}));
    search->show("");
    EXPECT_EQ(selected(), "app:app.slack") << "of what is asked for now";
}

TEST_F(SearchTest, WorksItsListWithTheKeyboard) {
    const ProcessID first = launch("app.a", "Alpha", Section::tucked);
    const ProcessID second = launch("app.b", "Beta", Section::bar);
    launch("app.c", "Gamma", Section::buried);
    startFaces();
    open();
    EXPECT_TRUE(press({.key = Key::down}));
    EXPECT_EQ(selected(), "app:app.b");
    EXPECT_EQ(mac.surfaces.announcements().back(), "Beta, In the bar");
    EXPECT_TRUE(press({.key = Key::up}));
    EXPECT_TRUE(press({.key = Key::enter}));
    EXPECT_EQ(mac.windows.menuOwner(), first) << "a tucked app's menu";
    EXPECT_FALSE(panel.isOpen());
    mac.closeMenu();
    pass(1s);
    open();
    EXPECT_TRUE(press({.key = Key::digit, .digit = 2, .command = true}));
    EXPECT_EQ(mac.windows.menuOwner(), second) << "an app in the bar has a menu, too";
    mac.closeMenu();
    pass(1s);
    open();
    EXPECT_TRUE(press({.key = Key::digit, .digit = 9, .command = true})) << "nobody else gets it";
    EXPECT_TRUE(panel.isOpen());
    EXPECT_TRUE(type("gam"));
    EXPECT_TRUE(press({.key = Key::enter, .command = true}));
    EXPECT_THAT(host.settingsOf, ElementsAre("app.c"));
    EXPECT_FALSE(panel.isOpen());
    open("gam");
    EXPECT_TRUE(press({.key = Key::enter, .option = true}));
    EXPECT_EQ(values().showingMe, "app.c");
    EXPECT_FALSE(panel.isOpen());
    open("gam");
    EXPECT_TRUE(press({.key = Key::escape}));
    EXPECT_FALSE(panel.isOpen());
}

TEST_F(SearchTest, SaysWithinHalfASecondThatAnAppDoesNotAnswer) {
    const ProcessID app = launch("app.a", "Alpha", Section::tucked);
    startFaces();
    mac.hang(app, true);
    open();
    EXPECT_TRUE(panel.perform("field", view::KeyPress{}));
    pass(500ms);
    EXPECT_TRUE(panel.isOpen());
    EXPECT_EQ(says("trouble:what"),
              "Alpha isn't answering, so its menu stays closed. Try again in a moment.");
    EXPECT_EQ(mac.surfaces.announcements().back(),
              "Alpha isn't answering, so its menu stays closed. Try again in a moment.");
    pass(5s);
    EXPECT_FALSE(shows("app.a"));
    mac.hang(app, false);
    EXPECT_TRUE(type(""));
    EXPECT_EQ(says("trouble:what"), "");
    mac.quit(app);
    EXPECT_TRUE(panel.perform("field", view::KeyPress{}));
    EXPECT_EQ(says("trouble:what"), "Alpha isn't running any more.");
    pass(20s);
    EXPECT_THAT(rows(), IsEmpty());
    EXPECT_EQ(says("none"),
              "No app has an icon in your menu bar right now. When one moves in, it shows up here.");
}

TEST_F(SearchTest, TakesThePlaceOfTheShelfAndGivesItBack) {
    launch("app.a", "Alpha", Section::tucked);
    startFaces();
    SimulatedSurface& shelfPanel = mac.surfaces.surface(Surfaces::Kind::shelf);
    toggle();
    EXPECT_TRUE(shelfPanel.isOpen());
    open();
    pass(1s);
    EXPECT_TRUE(panel.isOpen() && !shelfPanel.isOpen());
    toggle();
    EXPECT_TRUE(!panel.isOpen() && shelfPanel.isOpen());
}

TEST_F(SearchTest, KeepsTheSelectionWhenTheBarChanges) {
    launch("app.a", "Alpha", Section::bar);
    launch("app.b", "Beta", Section::bar);
    startFaces();
    open();
    EXPECT_TRUE(press({.key = Key::down}));
    launchNamed("app.0", "Aardvark");
    pass(5s);
    EXPECT_EQ(rows().size(), 3U);
    EXPECT_EQ(selected(), "app:app.b");
}

}  // namespace
}  // namespace velko
