#include <algorithm>
#include <array>
#include <chrono>
#include <string>
#include <string_view>

#include "Scenarios/Model/LogLines.h"
#include "Velko/App/AppController.h"
#include "VelkoCore/Layout/LayoutStore.h"
#include "VelkoCore/Layout/Switches.h"

// Lines of the log about the layout and its settings.

namespace velko::scenarios::model {

namespace {

using script::Verb;

void placed(LogLine& line) {
    Expected& expected = line.check.expected;
    const BundleID& app = line.parts[0];
    const bool answers = line.parts[1].ends_with(" (new icon answered)");
    line.check.require(answers == expected.isWaiting(app), "the log says when a new icon is answered",
                       line.text);
    expected.place(app, sectionCalled(line.parts[1].substr(0, line.parts[1].find(' '))));
    expected.popped.erase(app);
    expected.asked.insert("section changed");
}

// Settings

/// A line of the settings that no other row knows. It must be about a switch.
void switched(LogLine& line) {
    Expected& expected = line.check.expected;
    for (const SwitchRow& row : Switches::all) {
        const std::string words = std::string(row.words) + ' ';
        if (row.words.empty() || !line.text.starts_with(words)) {
            continue;
        }
        const bool on = line.text == words + "true";
        Switches::set(expected.layout, row.which, on);
        if (row.which == Switch::popOutOnChange && !on) {
            expected.popped.clear();
            expected.asked.insert("pop out off");
        } else if (row.which == Switch::leaveNewIconsOut) {
            for (const BundleID& app : expected.layout.inbox) {
                expected.layout.sections[app] = on ? Section::bar : Section::tucked;
            }
            expected.asked.insert("new icons wait");
        }
        return;
    }
    line.check.require(false, "the log says nothing unheard of", "[settings] " + line.text);
}

void defaultChanged(LogLine& line) {
    line.check.expected.layout.newIconDefault = sectionCalled(line.parts[0]);
    line.check.expected.asked.insert("new icon default");
}

void keepSwitched(LogLine& line) {
    auto& keep = line.check.expected.layout.alwaysKeep;
    if (line.parts[1] == "true") {
        keep.insert(line.parts[0]);
    } else {
        keep.erase(line.parts[0]);
    }
}

void staysSwitched(LogLine& line) {
    Expected& expected = line.check.expected;
    BundleIDs& stays = expected.layout.shareKeep;
    if (line.parts[1] == "true") {
        stays.insert(line.parts[0]);
    } else {
        stays.erase(line.parts[0]);
    }
    expected.asked.insert("stays while presenting");
}

void lastingChanged(LogLine& line) {
    line.check.expected.layout.presentingMinutes = line.parts.empty() ? 0 : std::stoll(line.parts[0]);
}

void popsOutSwitched(LogLine& line) {
    Expected& expected = line.check.expected;
    const BundleID& app = line.parts[0];
    const bool on = line.parts[1] == "true";
    if (on) {
        expected.layout.neverPopOut.erase(app);
    } else {
        expected.layout.neverPopOut.insert(app);
        if (expected.popped.erase(app) > 0) {
            expected.asked.insert("pop out off");
        }
    }
    expected.layout.quietUntil.erase(app);
}

void revealSettingsChanged(LogLine& line) {
    const auto style = [&](std::size_t part) {
        return line.parts[part] == "shelf" ? RevealStyle::shelf : RevealStyle::inline_;
    };
    line.check.expected.layout.reveal = {.autoTuckSeconds = std::stoll(line.parts[0]),
                                         .notchedStyle = style(1),
                                         .otherStyle = style(2),
                                         .hover = line.parts[3] == "true"};
    line.rearm();
}

void wideDisplaysChosen(LogLine& line) {
    auto& width = line.check.expected.layout.showAllFromWidth;
    width = line.parts[0] == "no width" ? std::nullopt : std::optional(std::stoll(line.parts[0]));
}

// The layout as a whole

/// Other tests check what is stored of a key.
void keyChosen(LogLine& line) {
    if (const AppController* velko = line.check.world.velko()) {
        line.check.expected.layout.hotKeys = velko->values().layout.hotKeys;
    }
}

void layoutCame(LogLine& line) {
    Expected& expected = line.check.expected;
    if (!expected.layout.popOutOnChange) {
        expected.popped.clear();
    }
    line.rearm();
}

void loaded(LogLine& line) {
    StepCheck& check = line.check;
    const auto file = LayoutStore(check.world.layoutFile()).load();
    Layout found = file ? file->value_or(Layout()) : Layout();
    found.autopilot.watchingSince.reset();  // the file may have got it later
    check.expected.takeOwn(std::move(found));
    check.expected.isUnreadable = false;
    check.require(line.parts[0] == std::to_string(check.expected.ownLayout.sections.size()),
                  "the log counts the placements", line.text);
    check.expected.asked.insert("layout loaded");
    layoutCame(line);
}

void madeAnew(LogLine& line) {
    line.check.expected.takeOwn(Layout());
    line.check.expected.isUnreadable = false;
    layoutCame(line);
}

void couldNotBeRead(LogLine& line) {
    line.check.expected.takeOwn(Layout());
    line.check.expected.isUnreadable = true;
    line.check.expected.asked.insert("layout loaded");
    layoutCame(line);
}

/// Other tests check what an imported layout contains.
template <const std::string_view& reason>
void replaced(LogLine& line) {
    if (const AppController* velko = line.check.world.velko()) {
        line.check.expected.layout = velko->values().layout;
    }
    line.check.expected.asked.emplace(reason);
    layoutCame(line);
}

/// No snooze is longer than a month, and a day more for clocks that differ.
void datesSetBack(LogLine& line) {
    StepCheck& check = line.check;
    if (const AppController* velko = check.world.velko()) {
        for (const auto& [app, until] : velko->values().layout.autopilot.snoozedUntil) {
            Date& mine = check.expected.layout.autopilot.snoozedUntil[app];
            if (mine - check.date() > std::chrono::days(30)) {
                mine = std::min(mine, until);
            }
            check.require(mine - check.date() <= std::chrono::days(31), "no snooze reaches too far", app);
        }
    }
}

/// The layout may come from the file, and know it already.
void setupPutOff(LogLine& line) {
    Layout& layout = line.check.expected.layout;
    layout.setupPutOff = layout.setupPutOff.value_or(line.check.date());
}

/// The layout has no room for apps that nobody names any more.
void forgot(LogLine& line) {
    Expected& expected = line.check.expected;
    std::string rest = line.parts[0];
    BundleIDs apps;
    for (std::size_t end = 0; end != std::string::npos;
         rest.erase(0, end == std::string::npos ? end : end + 2)) {
        end = rest.find(", ");
        apps.insert(rest.substr(0, end));
    }
    expected.layout.forget(apps);
    expected.asked.insert("forgotten");
}

/// What the history takes back is tested elsewhere.
constexpr std::string_view byUndo = "undo";
constexpr std::string_view byImport = "import";
constexpr std::string_view bySetup = "setup";
constexpr std::string_view byRestore = "restore";

void couldNotBeSaved(LogLine& line) {
    line.check.require(line.check.world.savingFails || line.check.step.verb == Verb::savingRecover,
                       "saving fails only where the disk does", line.text);
}

// What the organisation manages

/// Velko has read the administrator's file. Another rule checks that it has read it well.
void managedCame(LogLine& line) {
    Expected& expected = line.check.expected;
    if (const AppController* velko = line.check.world.velko()) {
        expected.keepOwn();
        expected.managed = velko->values().managed;
        expected.takeOwn(expected.ownLayout);
        std::erase_if(expected.popped, [&](const auto& popped) {
            return expected.managed.places(popped.first) ||
                   expected.layout.neverPopOut.contains(popped.first);
        });
    }
    expected.awaited.undisturbedFrom = line.at;
    expected.awaited.watched.clear();
    expected.awaited.changed.clear();
    expected.asked.insert("managed");
    layoutCame(line);
}

void stays(LogLine& line) {
    line.check.require(line.check.expected.managed.places(line.parts[0].substr(0, line.parts[0].find(','))),
                       "only what is managed stays where it is", line.text);
}

void staysAsItIs(LogLine& line) {
    line.check.require(!line.check.expected.managed.isEmpty(), "only what is managed stays as it is",
                       line.text);
}

constexpr auto layoutRows = std::to_array<LineRow>({
    {"layout", "loaded * placements from *", loaded, By::user},
    {"layout", "no layout yet: created *", madeAnew},
    {"layout", "UNREADABLE, showing everything: *", couldNotBeRead},
    {"layout", "save failed: *", couldNotBeSaved},
    {"layout", "imported * placements from *", replaced<byImport>, By::user},
    {"layout", "restored * placements from *", replaced<byRestore>, By::user},
    {"layout", "earlier layout kept as *", nothingFollows, By::user},
    {"layout", "no earlier layout kept: *", couldNotBeSaved},
    {"layout", "forgot *", forgot, By::user},
    {"layout", "undone: *", replaced<byUndo>, By::user},
    {"layout", "done again: *", replaced<byUndo>, By::user},
    {"layout", "exported * placements to *", nothingFollows},
    {"layout", "unreadable file kept as *", nothingFollows},
    {"layout", "started afresh", nothingFollows},
    {"layout", "the clock was ahead: dates set back", datesSetBack},
    {"layout", "* -> *", placed, By::user},
    {"managed", "IGNORED: *", managedCame},
    {"managed", "nothing any more", managedCame},
    {"managed", "left out: *", nothingFollows},
    {"managed", "stays where it is: *", stays, By::user},
    {"managed", "stays as it is: *", staysAsItIs, By::user},
    {"managed", "* from *", managedCame},
    {"settings", "new icons go to *", defaultChanged, By::user},
    {"settings", "always keep * *", keepSwitched, By::user},
    {"settings", "reveal settings *, *, *, *", revealSettingsChanged, By::user},
    {"settings", "show everything on displays from *", wideDisplaysChosen, By::user},
    {"settings", "show when it changes * *", popsOutSwitched, By::user},
    {"settings", "launch at login *", nothingFollows},
    {"settings", "stays while presenting * *", staysSwitched, By::user},
    {"settings", "presenting lasts until it is ended", lastingChanged, By::user},
    {"settings", "presenting lasts * minutes", lastingChanged, By::user},
    {"settings", "*", switched, By::user},
    {"keys", "ignored: *", nothingFollows},
    {"keys", "no key for *: *", nothingFollows},
    {"keys", "*: *", keyChosen, By::user},
    {"setup", "put off", setupPutOff, By::user},
    {"setup", "sorted: * in the bar, * tucked, * buried", replaced<bySetup>, By::user},
});

}  // namespace

std::span<const LineRow> layoutLines() {
    return layoutRows;
}

}  // namespace velko::scenarios::model
