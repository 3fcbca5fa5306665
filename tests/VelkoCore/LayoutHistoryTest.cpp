#include <algorithm>
#include <cerrno>
#include <gtest/gtest.h>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "VelkoCore/Layout/LayoutFormats.h"
#include "VelkoCore/Layout/LayoutHistory.h"
#include "tests/TemporaryFolder.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

constexpr Date someDay{1'772'357'400s};

Layout layoutOf(std::size_t number) {
    return {.sections = {{"app." + std::to_string(number), Section::tucked}}};
}

class LayoutHistoryTest : public testing::Test {
 protected:
    [[nodiscard]] LayoutHistory history(const FileCalls& calls = {}) const {
        return {folder_.path() / "layout.json", calls};
    }

    HistoryEntry keep(std::size_t number, Date now) {
        return history().keep(layoutOf(number), HistoryCause::change, now).value();
    }

    [[nodiscard]] std::vector<std::string> names() const {
        const auto entries = history().entries().value();
        std::vector<std::string> found(entries.size());
        std::ranges::transform(entries, found.begin(), &HistoryEntry::file);
        return found;
    }

    [[nodiscard]] std::string fileOf(const HistoryEntry& entry) const {
        return history().folder() / entry.file();
    }

    const TemporaryFolder folder_;
};

TEST_F(LayoutHistoryTest, NamesSayWhatTheyAre) {
    const std::string good = "2026-03-01-093000-0042-fresh-start.json";
    const auto entry = HistoryEntry::named(good);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->number, 42);
    EXPECT_EQ(entry->cause, HistoryCause::freshStart);
    EXPECT_EQ(entry->when, std::chrono::local_days{std::chrono::year{2026} / 3 / 1} + 9h + 30min);
    EXPECT_EQ(entry->file(), good);
    EXPECT_EQ(HistoryEntry::named("2026-03-01-093000-1234567-sort.json")->number, 1'234'567);
    for (const char* const bad :
         {"", "notes.json", "2026-03-01-093000-0042-import", "2026-03-01-093000-0042-lunch.json",
          "2026-02-30-093000-0042-import.json", "2026-03-01-240000-0042-import.json",
          "2026-03-01-093060-0042-import.json", "2026-03-01-093000-42-import.json",
          "2026-03-01-093000-00042-import.json", "2026-03-01-093000-4294967296-import.json",
          "2026-03-01-093000--042-import.json", " 2026-03-01-093000-0042-import.json",
          "2026-03-01-093000-0042-import.json~", "2026-3-01-093000-0042-import.json",
          "2026-03-01-0930000-0042-import.json", "2026-03-01-093000-0042-import-0043-sort.json"}) {
        EXPECT_FALSE(HistoryEntry::named(bad)) << bad;
    }
}

TEST_F(LayoutHistoryTest, TheNewestIsTheLastOneKeptWhateverTheClockSays) {
    EXPECT_TRUE(names().empty()) << "there is no folder yet";
    keep(1, someDay + 300 * 24h);
    keep(2, someDay);  // somebody has set the clock
    keep(3, someDay);
    keep(4, latestDate + 300 * 24h);
    keep(5, earliestDate - 300 * 24h);
    const auto all = history().list().value();
    ASSERT_EQ(all.size(), 5U);
    for (std::size_t place = 0; place < all.size(); ++place) {
        EXPECT_EQ(all[place].layout, layoutOf(5 - place)) << names()[place];
        EXPECT_EQ(HistoryEntry::named(names()[place]), all[place].entry);
    }
    const auto file = std::filesystem::status(fileOf(all[0].entry));
    EXPECT_EQ(file.permissions(), std::filesystem::perms(0600));
    EXPECT_EQ(std::filesystem::status(history().folder()).permissions(), std::filesystem::perms(0700));
}

TEST_F(LayoutHistoryTest, TwentyStayAndNothingOfOthersGoes) {
    std::filesystem::create_directory(history().folder());
    const std::vector<std::string> foreign{"notes.txt",
                                           "layout.json",
                                           "2026-03-01-093000-7-import.json",
                                           "2020-01-01-000000-0001-sort (copy).json",
                                           ".hidden",
                                           "\xFF\n.json"};
    for (const std::string& name : foreign) {
        writeFile(history().folder() / name, "mine");
    }
    for (std::uint32_t number = 1; number <= 25; ++number) {
        const HistoryEntry entry{.number = number * 2, .when = {}, .cause = HistoryCause::sort};
        writeFile(fileOf(entry), encodeLayout(layoutOf(number)));
    }
    EXPECT_EQ(names().size(), 25U) << "all can be restored until there is a new one";
    for (std::size_t number = 26; number < 30; ++number) {
        const HistoryEntry kept = keep(number, someDay);
        const auto all = history().list().value();
        ASSERT_EQ(all.size(), LayoutHistory::most);
        EXPECT_EQ(all.front().entry, kept);
        EXPECT_EQ(all.front().layout, layoutOf(number));
        EXPECT_EQ(all.back().layout, layoutOf(number - LayoutHistory::most + 1));
    }
    for (const std::string& name : foreign) {
        EXPECT_EQ(contentOf(history().folder() / name), "mine") << name;
    }
    writeFile(fileOf({.number = LayoutHistory::lastNumber, .when = {}, .cause = HistoryCause::sort}), "{}");
    EXPECT_FALSE(history().keep({}, HistoryCause::sort, someDay)) << "no name is used twice";
}

TEST_F(LayoutHistoryTest, WhatCannotBeReadIsListedWithTheReason) {
    const HistoryEntry spoilt = keep(1, someDay);
    const HistoryEntry folder = keep(2, someDay);
    const HistoryEntry good = keep(3, someDay);
    const HistoryEntry loop = keep(4, someDay);
    writeFile(fileOf(spoilt), R"({"sections": 7})");
    std::filesystem::remove(fileOf(folder));
    std::filesystem::create_directory(fileOf(folder));
    std::filesystem::remove(fileOf(loop));
    std::filesystem::create_symlink(fileOf(loop), fileOf(loop));
    const auto all = history().list().value();
    ASSERT_EQ(all.size(), 4U);
    EXPECT_EQ(all[0].layout.error().description,
              fileOf(loop) + ": cannot be looked up: too many symbolic links");
    EXPECT_EQ(all[1].layout, layoutOf(3));
    EXPECT_EQ(all[1].entry, good);
    EXPECT_EQ(all[2].layout.error().description, fileOf(folder) + ": cannot be read: it is a folder");
    EXPECT_EQ(all[3].layout.error().description,
              fileOf(spoilt) + ": sections: expected an object, found a number");
}

TEST_F(LayoutHistoryTest, AFileThatCannotBeUnderstoodIsKeptAsItIs) {
    const auto broken = folder_.path() / "layout.json";
    EXPECT_EQ(history().keepFile(broken, HistoryCause::freshStart, someDay), std::nullopt);
    writeFile(broken, std::string("{\0spoilt", 8));
    const auto kept = history().keepFile(broken, HistoryCause::freshStart, someDay);
    ASSERT_TRUE(kept && *kept);
    EXPECT_EQ(contentOf(fileOf(**kept)), contentOf(broken));
    std::filesystem::remove(broken);
    std::filesystem::create_directory(broken);
    EXPECT_FALSE(history().keepFile(broken, HistoryCause::freshStart, someDay));
}

TEST_F(LayoutHistoryTest, AFolderThatCannotBeUsedIsAnError) {
    writeFile(history().folder(), "in the way");
    EXPECT_FALSE(history().entries());
    const auto kept = history().keep({}, HistoryCause::import, someDay);
    EXPECT_EQ(kept.error().description,
              history().folder().string() + ": the folder cannot be read: Not a directory");
    EXPECT_EQ(contentOf(history().folder()), "in the way");
    std::filesystem::remove(history().folder());
    FileCalls calls;
    calls.mkdir = [](const char*, unsigned) {
        errno = EROFS;
        return -1;
    };
    EXPECT_EQ(history(calls).keep({}, HistoryCause::import, someDay).error().description,
              history().folder().string() + ": the folder cannot be made: Read-only file system");
}

/// From some call on every call fails, as for a process that is killed or a disk that is pulled out.
TEST_F(LayoutHistoryTest, AKillWhileOneIsKeptLosesNone) {
    for (std::size_t number = 0; number < LayoutHistory::most; ++number) {
        keep(number, someDay);
    }
    const auto before = history().list().value();
    int last = 0;
    for (int survived = 0, isDone = 0; isDone == 0 && survived < 50; ++survived) {
        int left = survived;
        FileCalls calls;
        const auto wrap = [&left](auto& member) {
            member = [&left, real = member](auto... arguments) {
                errno = EIO;
                return left-- > 0 ? real(arguments...) : decltype(real(arguments...)){-1};
            };
        };
        wrap(calls.open);
        wrap(calls.write);
        wrap(calls.fsync);
        wrap(calls.rename);
        wrap(calls.unlink);
        isDone = history(calls).keep(layoutOf(99), HistoryCause::sort, someDay) && left >= 0 ? 1 : 0;
        for (const auto& each : std::filesystem::directory_iterator(history().folder())) {
            if (each.path().filename().native().starts_with(".velko-save-")) {
                std::filesystem::remove(each.path());  // a process with another number would do it
            }
        }
        auto after = history().list().value();
        ASSERT_TRUE(std::ranges::all_of(after, [](const auto& each) { return each.layout.has_value(); }));
        if (!after.empty() && after.front().layout == layoutOf(99)) {
            last = survived;
            std::filesystem::remove(fileOf(after.front().entry));
            after.erase(after.begin());
        }
        after.resize(std::min(after.size(), before.size() - 1));
        EXPECT_TRUE(std::ranges::equal(after, std::span(before).first(after.size())));
        ASSERT_EQ(after.size(), before.size() - 1) << "survived " << survived << " calls";
    }
    EXPECT_GE(last, 5);
}

/// What an earlier layout and that of now make together.
TEST(RestoringTest, TheUsersDecisionsComeBackAndWhatWasLearntStays) {
    Layout earlier{.sections = {{"app.moved", Section::tucked},
                                {"app.forgotten", Section::buried},
                                {"app.waitedThen", Section::tucked},
                                {"app.waitedAndWent", Section::tucked}},
                   .newIconDefault = Section::tucked,
                   .lastClicked = {{"app.moved", someDay}, {"app.forgotten", someDay}},
                   .seenApps = BundleIDs{"app.moved", "app.forgotten", "app.waitedThen", "app.waitedAndWent",
                                         "app.default"},
                   .inbox = {"app.waitedThen", "app.waitedAndWent"},
                   .firstSeen = {{"app.waitedAndWent", someDay}},
                   .alwaysKeep = {"app.moved"}};
    earlier.reveal.autoTuckSeconds = 30;
    earlier.autopilot.enabled = false;
    earlier.leaveNewIconsOut = true;
    earlier.hotKeys = {std::string("keys")};
    Layout now{.sections = {{"app.moved", Section::bar},
                            {"app.waitedThen", Section::buried},
                            {"app.later", Section::buried},
                            {"app.waits", Section::tucked},
                            {"app.imported", Section::tucked},
                            {"app.default", Section::buried}},
               .lastClicked = {{"app.moved", someDay + 24h}},
               .hasCompletedSetup = true,
               .seenApps = BundleIDs{"app.moved", "app.waitedThen", "app.later", "app.waits", "app.imported",
                                     "app.default"},
               .inbox = {"app.waits"},
               .firstSeen = {{"app.later", someDay}, {"app.waits", someDay}}};
    now.autopilot.snoozedUntil = {{"app.moved", someDay}};
    now.autopilot.watchingSince = someDay;

    const Layout result = restored(now, earlier);
    EXPECT_EQ(result.sections, (std::map<BundleID, Section>{{"app.moved", Section::tucked},
                                                            {"app.forgotten", Section::buried},
                                                            {"app.waitedThen", Section::buried},
                                                            {"app.later", Section::buried},
                                                            {"app.waits", Section::bar}}));
    EXPECT_EQ(result.section("app.default"), Section::tucked);
    EXPECT_EQ(result.inbox, now.inbox);
    EXPECT_EQ(result.reveal, earlier.reveal);
    EXPECT_EQ(result.alwaysKeep, earlier.alwaysKeep);
    EXPECT_EQ(result.hotKeys, earlier.hotKeys);
    EXPECT_TRUE(result.hasCompletedSetup) << "the setup does not come again";
    EXPECT_FALSE(result.autopilot.enabled);
    EXPECT_EQ(result.autopilot.snoozedUntil, now.autopilot.snoozedUntil);
    EXPECT_EQ(result.lastClicked,
              (std::map<BundleID, Date>{{"app.moved", someDay + 24h}, {"app.forgotten", someDay}}));
    EXPECT_EQ(result.firstSeen, now.firstSeen);

    // Nobody is new but the app that went without an answer, and the one that never was here.
    Layout later = result;
    const BundleIDs present{"app.moved", "app.forgotten",     "app.waitedThen",
                            "app.later", "app.waitedAndWent", "app.imported"};
    EXPECT_EQ(later.admit({.present = present, .ownBundleID = "velko", .now = someDay}),
              (std::vector<BundleID>{"app.imported", "app.waitedAndWent"}));

    Layout undone = result;
    carryOver(undone, result, now);
    EXPECT_EQ(undone, now) << "a restore can be taken back as a whole";
}

TEST(RestoringTest, TheDifferencesAreWhatRestoringChanges) {
    Layout now{.sections = {{"app.a", Section::bar}, {"app.b", Section::tucked}},
               .lastClicked = {{"app.a", someDay}},
               .seenApps = BundleIDs{"app.a", "app.b"}};
    Layout earlier = now;
    earlier.lastClicked.clear();
    earlier.seenApps->insert("app.gone");
    earlier.autopilot.lastOffered = someDay;
    EXPECT_TRUE(changesOfRestoring(now, earlier).areNone()) << "what was learnt is no difference";
    now.place("app.later", Section::buried);
    now.firstSeen["app.later"] = someDay;
    EXPECT_TRUE(changesOfRestoring(now, earlier).areNone()) << "an app that came later stays";
    earlier.place("app.b", Section::buried);
    EXPECT_EQ(changesOfRestoring(now, earlier),
              (RestoredChanges{.moves = {{.bundleID = "app.b", .section = Section::buried}}}));
    earlier.sections.erase("app.b");
    EXPECT_EQ(changesOfRestoring(now, earlier),
              (RestoredChanges{.moves = {{.bundleID = "app.b", .section = Section::bar}}}));
    earlier.sections = now.sections;
    earlier.neverPopOut = {"app.a"};
    EXPECT_EQ(changesOfRestoring(now, earlier), RestoredChanges{.settings = true});
    earlier = now;
    earlier.autopilot.enabled = false;
    EXPECT_EQ(changesOfRestoring(now, earlier), RestoredChanges{.settings = true});
}

}  // namespace
}  // namespace velko
