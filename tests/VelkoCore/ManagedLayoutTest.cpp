#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "VelkoCore/Layout/LayoutFormats.h"
#include "VelkoCore/Layout/ManagedLayout.h"
#include "VelkoCore/Layout/ManagedLayoutFile.h"
#include "VelkoCore/Layout/Switches.h"
#include "tests/Dice.h"
#include "tests/TemporaryFolder.h"

namespace velko {
namespace {

/// A file with every key. Each switch is the other way round than in a fresh layout.
std::string everyKey() {
    std::string root;
    std::string reveal;
    std::string autopilot;
    for (const SwitchRow& row : Switches::all) {
        std::string& object = std::holds_alternative<bool RevealSettings::*>(row.stored)   ? reveal
                              : std::holds_alternative<bool AutopilotState::*>(row.stored) ? autopilot
                                                                                           : root;
        object.append(",\"").append(row.key).append("\":");
        object.append(Switches::isOn(Layout(), row.which) ? "false" : "true");
    }
    return R"({"sections":{"vpn":"bar","chat":"buried"},"newIconDefault":"tucked","alwaysKeep":["mail"],)"
           R"("neverPopOut":["clock"],"reveal":{"autoTuckSeconds":99,"notchedStyle":"inline",)"
           R"("otherStyle":"shelf")" +
           reveal + "},\"autopilot\":{" + autopilot.substr(1) + "}" + root + "}";
}

ManagedLayout managedBy(const std::string& text) {
    const auto found = ManagedLayout::read(text);
    EXPECT_TRUE(found) << text;
    return found.value_or(ManagedLayout::Found()).layout;
}

TEST(ManagedLayout, ReadsEveryKeyAndLaysItOverTheUsersOwn) {
    const auto found = ManagedLayout::read(everyKey());
    ASSERT_TRUE(found);
    EXPECT_TRUE(found->faults.empty());
    EXPECT_EQ(found->layout.countOfPreferences(), Switches::all.size() + 6);
    Layout own;
    own.sections = {{"chat", Section::bar}, {"new", Section::tucked}, {"mine", Section::tucked}};
    own.inbox = {"chat", "new"};
    own.autopilot.enabled = true;
    const Layout holds = found->layout.over(own);
    EXPECT_EQ(holds.section("vpn"), Section::bar);
    EXPECT_EQ(holds.section("chat"), Section::buried);
    EXPECT_EQ(holds.section("mine"), Section::tucked);
    EXPECT_EQ(holds.section("new"), Section::bar) << "new icons wait in the bar now";
    EXPECT_EQ(holds.inbox, std::vector<BundleID>{"new"}) << "nobody asks about what has its place";
    EXPECT_EQ(holds.newIconDefault, Section::tucked);
    EXPECT_EQ(holds.alwaysKeep, (BundleIDs{"chat", "mail", "vpn"}));
    EXPECT_EQ(holds.neverPopOut, BundleIDs{"clock"});
    EXPECT_EQ(holds.reveal, (RevealSettings{30, RevealStyle::inline_, RevealStyle::shelf, true}));
    for (const SwitchRow& row : Switches::all) {
        EXPECT_NE(Switches::isOn(holds, row.which), Switches::isOn(Layout(), row.which)) << row.key;
    }
}

TEST(ManagedLayout, TakesWhatALayoutFileOrAnExportSaysAndPassesOverTheRest) {
    Layout layout;
    layout.sections = {{"vpn", Section::tucked}};
    layout.lastClicked = {{"vpn", Date()}};
    layout.inbox = {"vpn"};
    for (const std::string& text : {encodeLayout(layout), LayoutExport::of(layout).data()}) {
        const auto found = ManagedLayout::read(text);
        ASSERT_TRUE(found) << text;
        EXPECT_TRUE(found->faults.empty()) << found->faults.front();
        EXPECT_TRUE(found->layout.places("vpn") && found->layout.sets(Switch::popOutOnChange));
        EXPECT_TRUE(found->layout.over(Layout()).inbox.empty());
        EXPECT_TRUE(found->layout.over(Layout()).lastClicked.empty());
    }
}

TEST(ManagedLayout, LeavesOutAWrongEntryAloneAndNamesIt) {
    struct Case {
        std::string text;
        std::vector<std::string> faults;
    };
    const std::vector<Case> cases{
        {R"({"sections":{"a":"hidden","b":5,"vpn":"bar"}})",
         {R"(sections.a: expected "bar", "tucked" or "buried", found "hidden")",
          R"(sections.b: expected "bar", "tucked" or "buried", found a number)"}},
        {R"({"sections":{"vpn":"bar"},"alwaysKeep":["mail",5]})",
         {"alwaysKeep[1]: expected a text, found a number"}},
        {R"({"sections":{"vpn":"bar"},"reveal":{"hover":"yes","otherStyle":null}})",
         {"reveal.hover: expected true or false, found a text"}},
        {R"({"sections":{"vpn":"bar"},"reveal":[],"autopilot":{"enabled":1}})",
         {"autopilot.enabled: expected true or false, found a number",
          "reveal: expected an object, found a list"}},
        {R"({"sections":{"vpn":"bar"},"newIconsDefault":"tucked","version":"1"})",
         {"newIconsDefault: this Velko knows no such key", "version: expected a whole number, found a text"}},
        {R"({"sections":{"vpn":"bar"},"neverPopOut":{}})", {"neverPopOut: expected a list, found an object"}},
    };
    for (const auto& [text, faults] : cases) {
        const auto found = ManagedLayout::read(text);
        ASSERT_TRUE(found) << text;
        EXPECT_EQ(found->faults, faults) << text;
        EXPECT_TRUE(found->layout.places("vpn")) << text;
    }
    std::string many = R"({"x0":0)";
    for (int key = 1; key < 100; ++key) {
        many.append(",\"x").append(std::to_string(key)).append("\":0");
    }
    EXPECT_EQ(ManagedLayout::read(many + "}")->faults.size(), ManagedLayout::Found::mostFaults);
}

TEST(ManagedLayout, RefusesWhatIsNoSuchFile) {
    for (const auto* text : {"", "no JSON", "[]", "5", R"({"sections":{}} x)", R"({"version":2})",
                             R"({"velkoLayout":2,"sections":{"vpn":"bar"}})"}) {
        EXPECT_FALSE(ManagedLayout::read(text)) << text;
    }
    EXPECT_EQ(ManagedLayout::read(R"({"version":2})").error(), "it is for a newer Velko");
}

// The promises of the two functions, over random layouts.

constexpr std::array someApps{"a", "b", "c", "d", "e"};

Layout randomLayout(Dice& dice) {
    Layout layout;
    for (const SwitchRow& row : Switches::all) {
        Switches::set(layout, row.which, dice.isOneIn(2));
    }
    layout.newIconDefault = dice.oneOf(allSections);
    layout.reveal.autoTuckSeconds = static_cast<std::int64_t>(3 + dice.roll(20));
    layout.reveal.notchedStyle = dice.isOneIn(2) ? RevealStyle::inline_ : RevealStyle::shelf;
    for (const BundleID app : someApps) {
        if (dice.isOneIn(3)) {
            layout.inbox.push_back(app);
            layout.sections[app] = layout.waitingSection();
            if (dice.isOneIn(2)) {
                layout.waitingGoneSince[app] = Date();
            }
        } else if (dice.isOneIn(2)) {
            layout.place(app, dice.oneOf(allSections));
        }
        if (dice.isOneIn(3)) {
            layout.alwaysKeep.insert(app);
            layout.neverPopOut.insert(dice.oneOf(someApps));
        }
    }
    return layout;
}

ManagedLayout randomlyManaged(Dice& dice) {
    ManagedLayout managed;
    for (const SwitchRow& row : Switches::all) {
        if (dice.isOneIn(3)) {
            managed.switches[row.which] = dice.isOneIn(2);
        }
    }
    for (const BundleID app : someApps) {
        if (dice.isOneIn(3)) {
            managed.sections[app] = dice.oneOf(allSections);
        }
        if (dice.isOneIn(4)) {
            managed.alwaysKeep.insert(app);
            managed.neverPopOut.insert(dice.oneOf(someApps));
        }
    }
    managed.newIconDefault = dice.isOneIn(2) ? std::optional(dice.oneOf(allSections)) : std::nullopt;
    managed.autoTuckSeconds = dice.isOneIn(2) ? std::optional<std::int64_t>(9) : std::nullopt;
    managed.otherStyle = dice.isOneIn(2) ? std::optional(RevealStyle::shelf) : std::nullopt;
    return managed;
}

TEST(ManagedLayout, ComesOffAgainWithoutATraceAndNoEditChangesWhatIsManaged) {
    for (unsigned seed = 0; seed < 3'000; ++seed) {
        Dice dice(seed);
        const Layout own = randomLayout(dice);
        const ManagedLayout managed = randomlyManaged(dice);
        const Layout holds = managed.over(own);
        ASSERT_EQ(managed.ownPart(holds, own), own) << "seed " << seed;

        Layout edited = dice.isOneIn(2) ? randomLayout(dice) : holds;
        edited.place(dice.oneOf(someApps), dice.oneOf(allSections));
        edited.lastClicked["a"] = Date();
        const Layout mine = managed.ownPart(edited, own);
        const Layout then = managed.over(mine);
        ASSERT_EQ(managed.ownPart(then, mine), mine) << "seed " << seed;
        ASSERT_EQ(then.lastClicked, edited.lastClicked);
        for (const BundleID app : someApps) {
            if (managed.places(app)) {
                ASSERT_EQ(then.section(app), managed.sections.at(app)) << "seed " << seed;
                ASSERT_FALSE(then.isWaiting(app));
                ASSERT_EQ(mine.sections.contains(app), own.sections.contains(app)) << "seed " << seed;
                ASSERT_EQ(mine.isWaiting(app), own.isWaiting(app)) << "seed " << seed;
                if (own.sections.contains(app)) {
                    ASSERT_EQ(mine.sections.at(app), own.sections.at(app)) << "seed " << seed;
                }
            } else if (!edited.isWaiting(app)) {
                ASSERT_EQ(then.sections.contains(app), edited.sections.contains(app)) << "seed " << seed;
                ASSERT_TRUE(!edited.sections.contains(app) || then.section(app) == edited.section(app));
            }
        }
        for (const SwitchRow& row : Switches::all) {
            const Layout& source = managed.sets(row.which) ? own : edited;
            ASSERT_EQ(Switches::isOn(mine, row.which), Switches::isOn(source, row.which)) << row.key;
        }
        ASSERT_EQ(mine.newIconDefault, (managed.newIconDefault ? own : edited).newIconDefault);
    }
}

// The file

TEST(ManagedLayoutFile, IsReadOnlyWhereNobodyElseCouldHaveWrittenIt) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "layout.json";
    ManagedLayoutFile store{.file = file, .owner = ::geteuid()};
    const auto refusedFor = [&](const std::string& reason) {
        const auto read = store.read();
        EXPECT_FALSE(read) << reason;
        EXPECT_TRUE(!read && read.error().contains(reason)) << (read ? "read" : read.error());
    };
    EXPECT_EQ(store.read(), std::nullopt) << "there is none";
    writeFile(file, everyKey());
    ::chmod(file.c_str(), 0644);
    EXPECT_EQ(store.read(), ManagedLayout::Found{.layout = managedBy(everyKey())});
    ::chmod(file.c_str(), 0664);
    refusedFor("other users may write to it");
    ::chmod(file.c_str(), 0646);
    refusedFor("other users may write to it");
    ::chmod(file.c_str(), 0644);
    store.owner = ::geteuid() + 1;
    refusedFor("it belongs to another user");
    store.owner = ::geteuid();

    writeFile(file, std::string(ManagedLayoutFile::largest + 1, ' '));
    refusedFor("larger than 1 MiB");
    writeFile(file, "no JSON");
    refusedFor(file.string());
    std::filesystem::remove(file);
    std::filesystem::create_symlink(file, file);
    refusedFor("it is a link");
    std::filesystem::remove(file);
    std::filesystem::create_directory(file);
    refusedFor("it is a folder");
    std::filesystem::remove(file);
    ::mkfifo(file.c_str(), 0644);
    refusedFor("it is no file");
    EXPECT_EQ(ManagedLayoutFile().read(), std::nullopt);

    FileCalls failing;
    failing.open = [](const char*, int, unsigned) {
        errno = EACCES;
        return -1;
    };
    store.calls = failing;
    refusedFor("cannot be opened");
}

}  // namespace
}  // namespace velko
