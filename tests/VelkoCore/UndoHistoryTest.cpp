#include <chrono>
#include <gtest/gtest.h>
#include <random>
#include <string>

#include "VelkoCore/Layout/LayoutFormats.h"
#include "VelkoCore/Layout/UndoHistory.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

constexpr Date noon{std::chrono::sys_days(2026y / 11 / 2) + 12h};

class UndoHistoryTest : public testing::Test {
 protected:
    void change(const std::string& title, const auto& edit) {
        const Layout before = layout;
        edit(layout);
        history.record({.title = title, .done = title + "."}, before, layout);
    }
    void place(const BundleID& app, Section section) {
        change("Place " + app, [&](Layout& edited) { edited.place(app, section); });
    }
    [[nodiscard]] std::string title() const {
        return history.undoable() == nullptr ? "" : history.undoable()->title;
    }

    Layout layout;
    UndoHistory history;
};

TEST_F(UndoHistoryTest, TakesBackTheLastChangeFirstAndDoesItAgain) {
    place("a", Section::tucked);
    place("a", Section::buried);
    EXPECT_TRUE(history.undo(layout));
    EXPECT_EQ(layout.section("a"), Section::tucked);
    EXPECT_EQ(history.redoable()->title, "Place a");
    EXPECT_TRUE(history.hasJustUndone());
    EXPECT_TRUE(history.undo(layout));
    EXPECT_FALSE(layout.sections.contains("a"));
    EXPECT_FALSE(history.undo(layout));
    EXPECT_TRUE(history.redo(layout));
    EXPECT_TRUE(history.redo(layout));
    EXPECT_EQ(layout.section("a"), Section::buried);
    EXPECT_FALSE(history.redo(layout));
    EXPECT_TRUE(history.undo(layout));
    place("b", Section::bar);
    EXPECT_EQ(history.redoable(), nullptr) << "a new change ends what could be done again";
    EXPECT_EQ(title(), "Place b");
    place("b", Section::bar);
    EXPECT_TRUE(history.undo(layout));
    EXPECT_EQ(title(), "Place a") << "what changes nothing is not kept";
}

TEST_F(UndoHistoryTest, LeavesWhatHasHappenedMeanwhile) {
    layout.inbox = {"new"};
    place("a", Section::tucked);
    place("new", Section::bar);
    layout.recordClick("a", noon, {});
    layout.place("later", Section::buried);
    layout.popOutOnChange = false;
    EXPECT_TRUE(history.undo(layout));
    EXPECT_TRUE(layout.isWaiting("new")) << "it waits for an answer again";
    EXPECT_TRUE(history.undo(layout));
    EXPECT_TRUE(layout.lastClicked.contains("a"));
    EXPECT_EQ(layout.section("later"), Section::buried);
    EXPECT_FALSE(layout.popOutOnChange);
}

TEST_F(UndoHistoryTest, LetsAppsWaitWhereTheyWaitNowAndOnlyThose) {
    layout.inbox = {"new"};
    layout.place("gone", Section::buried);
    place("new", Section::buried);
    change("Forget", [](Layout& edited) { edited.forget({"gone"}); });
    layout.sections["gone"] = Section::tucked;  // it is launched, and asked about as any newcomer
    layout.inbox.emplace_back("gone");
    EXPECT_TRUE(history.undo(layout));
    EXPECT_EQ(layout.section("gone"), Section::buried);
    EXPECT_FALSE(layout.isWaiting("gone"));
    layout.leaveNewIconsOut = true;
    EXPECT_TRUE(history.undo(layout));
    EXPECT_TRUE(layout.isWaiting("new"));
    EXPECT_EQ(layout.section("new"), Section::bar);
    layout.waitingGoneSince["new"] = noon;
    EXPECT_TRUE(history.redo(layout));
    EXPECT_TRUE(layout.waitingGoneSince.empty());
}

TEST_F(UndoHistoryTest, TakesBackAllThatAnImportBrings) {
    layout.place("mine", Section::bar);
    Layout other;
    other.place("mine", Section::buried);
    other.place("theirs", Section::tucked);
    other.alwaysKeep = {"theirs"};
    other.reveal = {.autoTuckSeconds = 20, .notchedStyle = RevealStyle::inline_, .hover = true};
    other.newIconDefault = Section::tucked;
    other.askAboutNewIcons = false;
    other.showAllFromWidth = 2560;
    const Layout before = layout;
    change("Import", [&](Layout& edited) { edited.apply(LayoutExport::of(other)); });
    const Layout after = layout;
    EXPECT_TRUE(history.undo(layout));
    EXPECT_EQ(layout, before);
    EXPECT_TRUE(history.redo(layout));
    EXPECT_EQ(layout, after);
    history.clear();
    EXPECT_FALSE(history.undo(layout));
}

TEST_F(UndoHistoryTest, KeepsOnlyTheLastFifty) {
    for (std::size_t number = 0; number < UndoHistory::longest + 5; ++number) {
        place("app" + std::to_string(number), Section::tucked);
    }
    std::size_t undone = 0;
    while (history.undo(layout)) {
        ++undone;
    }
    EXPECT_EQ(undone, UndoHistory::longest);
    EXPECT_EQ(layout.sections.size(), 5U);
}

TEST(Forgetting, LeavesNoTraceInTheFile) {
    const BundleID app = "com.example.gone";
    Layout layout;
    layout.recordClick(app, noon, {});
    layout.snooze(app, noon, {});
    layout.setPopsOut(app, false);
    layout.quieten(app, noon, {});
    layout.place(app, Section::buried);
    layout.inbox = {app, "com.example.other"};
    layout.firstSeen[app] = noon;
    layout.seenApps = BundleIDs{app};
    layout.alwaysKeep = {app};
    layout.forget({app});
    EXPECT_EQ(encodeLayout(layout).find(app), std::string::npos) << encodeLayout(layout);
    EXPECT_TRUE(layout.isWaiting("com.example.other"));
}

TEST_F(UndoHistoryTest, BringsBackEveryLayoutOfARandomWalk) {
    const auto seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    std::vector<Layout> past{layout};
    for (int step = 0; step < 40; ++step) {
        const BundleID app = "app" + std::to_string(random() % 5);
        change("Change", [&](Layout& edited) {
            switch (random() % 4) {
                case 0: edited.place(app, allSections.at(random() % 3)); break;
                case 1: edited.forget({app}); break;
                case 2: edited.snooze(app, noon + std::chrono::hours(random() % 500), {}); break;
                default: edited.alwaysKeep.insert(app); break;
            }
        });
        if (!(layout == past.back())) {
            past.push_back(layout);
        }
    }
    while (past.size() > 1) {
        past.pop_back();
        ASSERT_TRUE(history.undo(layout));
        ASSERT_EQ(layout, past.back());
    }
}

}  // namespace
}  // namespace velko
