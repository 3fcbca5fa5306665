#include <algorithm>
#include <array>
#include <chrono>
#include <string>
#include <string_view>

#include "Scenarios/Model/Heard.h"
#include "VelkoCore/Layout/LayoutStore.h"
#include "VelkoCore/Layout/Switches.h"

// What the log says of the layout and the settings in it.

namespace velko::scenarios::model {

namespace {

using script::Verb;

void placed(Heard& heard) {
    Belief& belief = heard.scene.belief;
    const BundleID& app = heard.parts[0];
    const bool answers = heard.parts[1].ends_with(" (new icon answered)");
    heard.scene.require(answers == belief.isWaiting(app), "the log says when a new icon is answered",
                        heard.text);
    belief.place(app, sectionCalled(heard.parts[1].substr(0, heard.parts[1].find(' '))));
    belief.popped.erase(app);
    belief.asked.insert("section changed");
}

// Settings

/// A line of the settings that no other row knows: one of a switch.
void switched(Heard& heard) {
    Belief& belief = heard.scene.belief;
    for (const SwitchRow& row : Switches::all) {
        const std::string words = std::string(row.words) + ' ';
        if (row.words.empty() || !heard.text.starts_with(words)) {
            continue;
        }
        const bool on = heard.text == words + "true";
        Switches::set(belief.layout, row.which, on);
        if (row.which == Switch::popOutOnChange && !on) {
            belief.popped.clear();
            belief.asked.insert("pop out off");
        }
        return;
    }
    heard.scene.require(false, "the log says nothing unheard of", "[settings] " + heard.text);
}

void defaultChanged(Heard& heard) {
    heard.scene.belief.layout.newIconDefault = sectionCalled(heard.parts[0]);
    heard.scene.belief.asked.insert("new icon default");
}

void keepSwitched(Heard& heard) {
    auto& keep = heard.scene.belief.layout.alwaysKeep;
    if (heard.parts[1] == "true") {
        keep.insert(heard.parts[0]);
    } else {
        keep.erase(heard.parts[0]);
    }
}

void revealSettingsChanged(Heard& heard) {
    const auto style = [&](std::size_t part) {
        return heard.parts[part] == "shelf" ? RevealStyle::shelf : RevealStyle::inline_;
    };
    heard.scene.belief.layout.reveal = {.autoTuckSeconds = std::stoll(heard.parts[0]),
                                        .notchedStyle = style(1),
                                        .otherStyle = style(2),
                                        .hover = heard.parts[3] == "true"};
    heard.rearm();
}

// The layout as a whole

void layoutCame(Heard& heard) {
    Belief& belief = heard.scene.belief;
    if (!belief.layout.popOutOnChange) {
        belief.popped.clear();
    }
    heard.rearm();
}

void loaded(Heard& heard) {
    Scene& scene = heard.scene;
    const auto file = LayoutStore(scene.world.layoutFile()).load();
    scene.belief.layout = file ? file->value_or(Layout()) : Layout();
    scene.belief.layout.autopilot.watchingSince.reset();  // it may have come into the file since
    scene.belief.isUnreadable = false;
    scene.require(heard.parts[0] == std::to_string(scene.belief.layout.sections.size()),
                  "the log counts the placements", heard.text);
    scene.belief.asked.insert("layout loaded");
    layoutCame(heard);
}

void madeAnew(Heard& heard) {
    heard.scene.belief.layout = Layout();
    heard.scene.belief.isUnreadable = false;
    layoutCame(heard);
}

void couldNotBeRead(Heard& heard) {
    heard.scene.belief.layout = Layout();
    heard.scene.belief.isUnreadable = true;
    heard.scene.belief.asked.insert("layout loaded");
    layoutCame(heard);
}

/// What an imported layout brings is told by tests of its own.
template <const std::string_view& reason>
void replaced(Heard& heard) {
    if (const AppController* velko = heard.scene.world.velko()) {
        heard.scene.belief.layout = velko->values().layout;
    }
    heard.scene.belief.asked.emplace(reason);
    layoutCame(heard);
}

/// No snooze reaches further than a month, and a day for clocks that differ.
void datesSetBack(Heard& heard) {
    Scene& scene = heard.scene;
    if (const AppController* velko = scene.world.velko()) {
        for (const auto& [app, until] : velko->values().layout.autopilot.snoozedUntil) {
            Date& mine = scene.belief.layout.autopilot.snoozedUntil[app];
            if (mine - scene.date() > std::chrono::days(30)) {
                mine = std::min(mine, until);
            }
            scene.require(mine - scene.date() <= std::chrono::days(31), "no snooze reaches too far", app);
        }
    }
}

constexpr std::string_view byImport = "import";
constexpr std::string_view bySetup = "setup";

void couldNotBeSaved(Heard& heard) {
    heard.scene.require(heard.scene.world.savingFails || heard.scene.step.verb == Verb::savingRecover,
                        "saving fails only where the disk does", heard.text);
}

constexpr auto layoutLines = std::to_array<LineRow>({
    {"layout", "loaded * placements from *", loaded},
    {"layout", "no layout yet: created *", madeAnew},
    {"layout", "UNREADABLE, showing everything: *", couldNotBeRead},
    {"layout", "save failed: *", couldNotBeSaved},
    {"layout", "imported * placements from *", replaced<byImport>},
    {"layout", "exported * placements to *", nothingFollows},
    {"layout", "unreadable file kept as *", nothingFollows},
    {"layout", "started afresh", nothingFollows},
    {"layout", "the clock was ahead: dates set back", datesSetBack},
    {"layout", "* -> *", placed},
    {"settings", "new icons go to *", defaultChanged},
    {"settings", "always keep * *", keepSwitched},
    {"settings", "reveal settings *, *, *, *", revealSettingsChanged},
    {"settings", "launch at login *", nothingFollows},
    {"settings", "*", switched},
    {"setup", "sorted: * in the bar, * tucked, * buried", replaced<bySetup>},
});

}  // namespace

std::span<const LineRow> linesOfLayout() {
    return layoutLines;
}

}  // namespace velko::scenarios::model
