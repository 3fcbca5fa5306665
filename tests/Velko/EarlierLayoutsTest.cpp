#include <algorithm>
#include <cerrno>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "Simulator/Desktop/SimulatedHotKeys.h"
#include "Velko/Apps/EarlierWords.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Flows/EarlierLayouts.h"
#include "Velko/Flows/GlobalKeys.h"
#include "Velko/Flows/LayoutTransfer.h"
#include "Velko/Flows/Preferences.h"
#include "VelkoCore/Layout/LayoutFormats.h"
#include "tests/Velko/SettingsOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

class EarlierLayoutsTest : public SettingsOnMac {
 protected:
    EarlierLayoutsTest() {
        launch("app.slack", "Slack", Section::bar);
        launch("app.zoom", "Zoom", Section::tucked);
    }

    [[nodiscard]] LayoutHistory history() const { return LayoutStore(file()).history(); }
    [[nodiscard]] std::vector<EarlierLayout> kept() { return velko->earlierLayouts().list().value(); }
    [[nodiscard]] std::vector<HistoryCause> causes() {
        std::vector<HistoryCause> found;
        std::ranges::transform(kept(), std::back_inserter(found),
                               [](const EarlierLayout& each) { return each.entry.cause; });
        return found;
    }
    [[nodiscard]] SimulatedSurface& list() { return mac.surfaces.surface(Surfaces::Kind::history); }

    void importWithEverythingBuried() {
        Layout other;
        for (const char* const app : {"app.slack", "app.zoom", "app.a", "app.b", "app.c"}) {
            other.place(app, Section::buried);
        }
        other.reveal.autoTuckSeconds = 30;
        writeFile(folder.path() / "other.velko", LayoutExport::of(other).data());
        ASSERT_TRUE(velko->transfer().importFrom(folder.path() / "other.velko"));
        pass(1s);
    }
    std::string restore(std::uint32_t number) {
        const auto done = velko->earlierLayouts().restore(number);
        pass(1s);
        return done ? "" : done.error();
    }

    std::function<int(const char*, unsigned)> mkdir = files.mkdir;
    bool isReadOnly = false;
};

TEST_F(EarlierLayoutsTest, AnImportCanBeTakenBackTheNextDay) {
    start();
    importWithEverythingBuried();
    EXPECT_EQ(causes(), std::vector{HistoryCause::import});
    EXPECT_TRUE(
        logged("[layout] earlier layout kept as " + (history().folder() / kept()[0].entry.file()).string()));
    pass(24h);
    launch("app.later");
    pass(5s);
    velko->place("app.later", Section::tucked);
    EXPECT_EQ(
        velko->earlierLayouts().inWords(kept()[1]),
        "5 apps lie elsewhere: Slack was in the bar, Zoom was tucked, app.a was in the bar, and 2 more. "
        "Some settings differ.");
    EXPECT_EQ(restore(kept()[1].entry.number), "");
    EXPECT_TRUE(shows("app.slack"));
    EXPECT_EQ(saved().section("app.zoom"), Section::tucked);
    EXPECT_EQ(saved().section("app.later"), Section::tucked) << "it came later";
    EXPECT_EQ(saved().reveal, layout.reveal);
    EXPECT_TRUE(logged("[layout] restored 2 placements from "));
    EXPECT_TRUE(logged("[engine] applied (restore) in "));
    EXPECT_EQ(causes(), (std::vector{HistoryCause::restore, HistoryCause::change, HistoryCause::import}));
    EXPECT_EQ(velko->earlierLayouts().inWords(kept()[2]), "The same as now.");
    EXPECT_TRUE(velko->undo());
    pass(1s);
    EXPECT_EQ(saved().section("app.slack"), Section::buried);
    EXPECT_EQ(saved().reveal.autoTuckSeconds, 30);
    EXPECT_EQ(restore(99), "There is no earlier layout with the number 99.");
}

TEST_F(EarlierLayoutsTest, ADayOfChangesKeepsTheLayoutOnce) {
    start();
    const Layout before = values().layout;
    velko->open("app.zoom");
    pass(30s);
    EXPECT_TRUE(kept().empty()) << "a click is no decision";
    velko->preferences().setSwitch(Switch::popOutOnChange, false);
    velko->place("app.slack", Section::buried);
    velko->undo();
    EXPECT_EQ(causes(), std::vector{HistoryCause::change});
    EXPECT_EQ(kept()[0].layout->sections, before.sections);
    EXPECT_TRUE(kept()[0].layout->popOutOnChange);
    velko->quit();
    startWithFileAsItIs();
    velko->place("app.slack", Section::tucked);
    EXPECT_EQ(kept().size(), 1U) << "the day goes on after a restart";
    velko->preferences().setSwitch(Switch::popOutOnChange, false);
    pass(24h);
    velko->preferences().setSwitch(Switch::popOutOnChange, false);
    EXPECT_EQ(kept().size(), 1U) << "nothing has changed";
    velko->preferences().setSwitch(Switch::popOutOnChange, true);
    EXPECT_EQ(kept().size(), 2U);
    mac.mainThread.setDate(mac.mainThread.date() - 24h * 100);
    velko->place("app.slack", Section::bar);
    EXPECT_EQ(kept().size(), 3U);
    EXPECT_EQ(kept()[0].layout->section("app.slack"), Section::tucked) << "the newest comes first";
}

TEST_F(EarlierLayoutsTest, SortingKeepsWhatWasBefore) {
    start();
    velko->completeSetup({{"app.slack", Section::buried}});
    EXPECT_EQ(causes(), std::vector{HistoryCause::sort});
    EXPECT_EQ(kept()[0].layout->section("app.slack"), Section::bar);
    velko->completeSetup({{"app.slack", Section::buried}});
    EXPECT_EQ(kept().size(), 1U) << "nothing has changed";
}

TEST_F(EarlierLayoutsTest, AFolderThatCannotBeWrittenStopsNothingAndIsSaid) {
    files.mkdir = [this](const char* path, unsigned mode) {
        errno = EROFS;
        return isReadOnly && std::string(path).ends_with("history") ? -1 : mkdir(path, mode);
    };
    startSettings();
    isReadOnly = true;
    velko->place("app.slack", Section::buried);
    importWithEverythingBuried();
    EXPECT_EQ(saved().section("app.zoom"), Section::buried);
    EXPECT_EQ(timesLogged("[layout] no earlier layout kept: " + history().folder().string()), 1);
    EXPECT_EQ(words("problem:history:what"), "Your layout as it was couldn't be kept.");
    EXPECT_TRUE(words("problem:history:more").ends_with("the folder cannot be made: Read-only file system"));
    isReadOnly = false;
    velko->place("app.slack", Section::tucked);
    pass(1s);
    EXPECT_EQ(kept().size(), 1U);
    EXPECT_EQ(find("problem:history"), nullptr);
}

TEST_F(EarlierLayoutsTest, AfterALayoutThatCannotBeReadOneIsRestored) {
    start();
    velko->place("app.slack", Section::buried);
    velko->quit();
    write("broken");
    startWithFileAsItIs();
    EXPECT_EQ(velko->earlierLayouts().inWords(kept()[0]), "2 apps have their place in it.");
    EXPECT_EQ(restore(kept()[0].entry.number), "");
    EXPECT_TRUE(values().health().isOk());
    EXPECT_TRUE(logged("[layout] unreadable file kept as "));
    EXPECT_EQ(saved().section("app.slack"), Section::bar);
    EXPECT_FALSE(shows("app.zoom"));
    ASSERT_EQ(causes(), (std::vector{HistoryCause::restore, HistoryCause::change}));
    EXPECT_FALSE(kept()[0].layout) << "the broken file itself, and nothing that nobody has decided";
    EXPECT_EQ(contentOf(history().folder() / kept()[0].entry.file()), "broken");
    EXPECT_TRUE(restore(kept()[0].entry.number).starts_with("That layout can't be read: "));
    velko->place("app.slack", Section::tucked);
    EXPECT_EQ(kept().size(), 2U);
}

TEST_F(EarlierLayoutsTest, WhatIsManagedIsNeitherKeptNorRestored) {
    managed = {.file = folder.path() / "managed.json", .owner = ::geteuid()};
    writeFile(managed.file, R"({"sections":{"app.zoom":"buried"}})");
    ::chmod(managed.file.c_str(), 0644);
    start();
    velko->place("app.slack", Section::buried);
    EXPECT_EQ(kept()[0].layout->section("app.zoom"), Section::tucked);
    EXPECT_EQ(velko->earlierLayouts().inWords(kept()[0]), "1 app lies elsewhere: Slack was in the bar.");
    EXPECT_EQ(restore(kept()[0].entry.number), "");
    EXPECT_EQ(values().layout.section("app.slack"), Section::bar);
    EXPECT_EQ(values().layout.section("app.zoom"), Section::buried);
    EXPECT_EQ(saved().section("app.zoom"), Section::tucked);
}

TEST_F(EarlierLayoutsTest, KeysComeBackWithTheLayout) {
    start();
    const auto keys = Keys::parse("control+option+k").value_or(KeyCombination());
    EXPECT_EQ(velko->keys().set(HotKeyAction::toggle, keys), std::nullopt);
    EXPECT_EQ(mac.hotKeys.registered().size(), 1U);
    EXPECT_EQ(restore(kept()[0].entry.number), "");
    EXPECT_TRUE(mac.hotKeys.registered().empty());
    velko->undo();
    EXPECT_EQ(mac.hotKeys.registered().size(), 1U);
}

TEST_F(EarlierLayoutsTest, TheWindowSaysWhatIsThereAndRestoresIt) {
    startSettings();
    openPage(1);
    set("earlier-layouts");
    ASSERT_TRUE(list().isOpen());
    EXPECT_EQ(reading(*list().content()).back(), "There is none yet.");
    importWithEverythingBuried();
    writeFile(history().folder() / "2020-02-03-040506-0000-sort.json", "spoilt");
    set("earlier-layouts");
    auto lines = reading(*list().content());
    const auto has = [&](const std::string& line) { return std::ranges::count(lines, line) == 1; };
    EXPECT_TRUE(std::ranges::any_of(lines, [](const std::string& line) {
        return line.starts_with("Today at ") && line.ends_with(", before an import");
    }));
    EXPECT_TRUE(has("3 February 2020 at 04:05, before sorting"));
    EXPECT_TRUE(has("(Restore the layout of 3 February 2020 at 04:05, before sorting)"));
    EXPECT_TRUE(list().perform("history:1:restore"));
    pass(1s);
    EXPECT_EQ(values().layout.section("app.slack"), Section::bar);
    lines = reading(*list().content());
    EXPECT_TRUE(std::ranges::any_of(lines, [](const std::string& line) {
        return line.ends_with(", before another one was restored");
    })) << "the list shows what was kept meanwhile";
    EXPECT_TRUE(has("Undo Restore"));
    EXPECT_TRUE(list().perform("undo:button"));
    pass(1s);
    EXPECT_EQ(values().layout.section("app.slack"), Section::buried);
    window().dismiss(Surface::Dismissal::closeButton);
    pass(1s);
    EXPECT_FALSE(list().isOpen()) << "it goes with the settings";
}

TEST(EarlierWordsTest, MomentsAreSaidAsPeopleSayThem) {
    const std::chrono::local_seconds now = std::chrono::local_days{std::chrono::year{2026} / 1 / 2} + 3h;
    EXPECT_EQ(EarlierWords::when(now - 1min, now), "today at 02:59");
    EXPECT_EQ(EarlierWords::when(now - 4h, now), "yesterday at 23:00");
    EXPECT_EQ(EarlierWords::when(now - 48h, now), "31 December 2025 at 03:00");
    EXPECT_EQ(EarlierWords::when(now + 48h, now), "4 January at 03:00") << "from a clock that was ahead";
}

TEST_F(EarlierLayoutsTest, DifferencesNameAFewApps) {
    start();
    const AppNames names(values(), mac.platform().workspace);
    RestoredChanges changes;
    const auto inWords = [&] { return EarlierWords::differences(changes, values(), names); };
    changes.settings = true;
    EXPECT_EQ(inWords(), "Some settings differ.");
    changes.moves = {{"app.a", Section::bar}, {"app.zoom", Section::buried}};
    EXPECT_EQ(inWords(),
              "2 apps lie elsewhere: Zoom was buried, app.a was in the bar. Some settings differ.");
    changes = {.moves = {{"app.zoom", Section::tucked}}};
    EXPECT_EQ(inWords(), "1 app lies elsewhere: Zoom was tucked.");
    changes.moves.resize(4, {"app.b", Section::bar});
    EXPECT_FALSE(inWords().contains("more"));
}

}  // namespace
}  // namespace velko
