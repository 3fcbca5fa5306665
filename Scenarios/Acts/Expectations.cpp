#include <algorithm>
#include <array>
#include <string>

#include "Scenarios/Acts/Acts.h"
#include "Scenarios/SampleApps.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/MenuBar/SimulatedMenuBar.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "Velko/App/AppController.h"
#include "Velko/Flows/Questions.h"
#include "Velko/View/Tree.h"

namespace velko::script {

namespace {

using scenarios::World;

Done holds(bool condition, const std::string& otherwise) {
    return condition ? Done() : std::unexpected(otherwise);
}

Done equal(const std::string& actual, const std::string& expected) {
    return holds(actual == expected, "It is " + actual + ", not " + expected + ".");
}

bool isShown(const Step& step, const World& world) {
    return std::ranges::count(world.mac().visibleIcons(), appOf(step)) > 0;
}

Done visible(const Step& step, World& world) {
    return holds(isShown(step, world), step.app + " does not show.");
}

Done hidden(const Step& step, World& world) {
    const bool runs = !world.mac().workspace.pids(appOf(step)).empty();
    return holds(runs && !isShown(step, world), step.app + (runs ? " shows." : " does not run."));
}

Done withoutRoom(const Step& step, World& world) {
    const BundleID app = appOf(step);
    const auto& slots = world.mac().menuBar().slots();
    const bool isSwallowed = std::ranges::any_of(
        slots, [&](const auto& slot) { return slot.bundleID == app && slot.isSwallowed; });
    return holds(isSwallowed, step.app + " has room in the bar, or does not show.");
}

std::string stateOf(const AppController& velko) {
    const RevealState& state = velko.values().state;
    if (state.asPeeking() != nullptr) {
        return "opening";
    }
    if (state.asShareSafe() != nullptr) {
        return "presenting";
    }
    return state == RevealState::revealedWithBuried() ? "buried" : describe(state);
}

std::string healthOf(const AppController& velko) {
    switch (velko.values().health().kind) {
        case Health::Kind::ok: return "ok";
        case Health::Kind::needsAccessibility: return "trust-missing";
        case Health::Kind::engineUnavailable: return "engine-missing";
        case Health::Kind::layoutUnreadable: return "layout-unreadable";
    }
    return "unknown";
}

/// An expectation about Velko, which must run.
template <Done (*check)(const Step&, AppController&)>
Done inVelko(const Step& step, World& world) {
    return world.velko() == nullptr ? std::unexpected("Velko does not run.") : check(step, *world.velko());
}

Done waiting(const Step& step, AppController& velko) {
    return holds(velko.values().layout.isWaiting(appOf(step)), step.app + " does not wait for an answer.");
}

Done suggested(const Step& step, AppController& velko) {
    const auto suggestions = velko.autopilot().suggestions();
    return holds(std::ranges::count(suggestions, appOf(step), &TidySuggestion::bundleID) > 0,
                 "Velko suggests nothing for " + step.app + ".");
}

Done state(const Step& step, AppController& velko) {
    return equal(stateOf(velko), step.word);
}

Done health(const Step& step, AppController& velko) {
    return equal(healthOf(velko), step.word);
}

Done tidied(const Step& step, AppController& velko) {
    return equal(std::to_string(velko.values().tidiedCount), std::to_string(step.amount.value_or(0)));
}

Done menu(const Step& step, World& world) {
    const auto owner = world.mac().windows.menuOwner();
    return holds(owner && world.mac().workspace.bundleID(*owner) == appOf(step),
                 "The menu of " + step.app + " is not open.");
}

Done logged(const Step& step, World& world) {
    const std::string text = step.text.value_or("");
    const auto times = std::ranges::count_if(world.log().lines(),
                                             [&](std::string_view line) { return line.contains(text); });
    return step.amount ? equal(std::to_string(times), std::to_string(*step.amount))
                       : holds(times > 0, "The log does not say that.");
}

Done open(const Step& step, World& world) {
    return holds(surfaceOf(step, world).isOpen(), "The " + step.word + " is not open.");
}

Done closed(const Step& step, World& world) {
    return holds(!surfaceOf(step, world).isOpen(), "The " + step.word + " is open.");
}

bool isSaid(const Step& step, World& world) {
    bool isFound = false;
    if (const view::Node* content = surfaceOf(step, world).content()) {
        view::walk(*content, [&](const view::Node& node) {
            isFound = isFound || view::spoken(node).contains(step.text.value_or(""));
        });
    }
    return isFound;
}

Done says(const Step& step, World& world) {
    return holds(isSaid(step, world), "The " + step.word + " does not say that.");
}

Done lacks(const Step& step, World& world) {
    return holds(surfaceOf(step, world).isOpen() && !isSaid(step, world),
                 "The " + step.word + " says that, or is not open.");
}

Done toolTip(const Step& step, World& world) {
    const std::string& text = world.mac().statusItem.toolTip();
    return holds(text.contains(step.text.value_or("")), "It says: " + text);
}

Done clicked(const Step& step, AppController& velko) {
    return holds(velko.values().layout.lastClicked.contains(appOf(step)),
                 "No click on " + step.app + " is known.");
}

Done unclicked(const Step& step, AppController& velko) {
    return holds(!velko.values().layout.lastClicked.contains(appOf(step)),
                 "A click on " + step.app + " is known.");
}

/// Whether a menu, or one within it, has an entry of that title.
bool holdsEntry(const view::Menu& menu, const std::string& title) {
    return std::ranges::any_of(menu, [&](const view::MenuItem& item) {
        return item.title == title || holdsEntry(item.submenu, title);
    });
}

Done choice(const Step& step, World& world) {
    const auto* const menu = world.mac().statusItem.menu();
    return holds(menu != nullptr && holdsEntry(*menu, step.text.value_or("")),
                 menu == nullptr ? "The broom's menu is not open." : "The broom's menu has no such entry.");
}

Done noChoice(const Step&, World& world) {
    return holds(world.mac().statusItem.menu() == nullptr, "The broom's menu is open.");
}

Done announced(const Step& step, World& world) {
    return holds(
        std::ranges::any_of(world.mac().surfaces.announcements(),
                            [&](const std::string& words) { return words.contains(step.text.value_or("")); }),
        "A screen reader was not told that.");
}

constexpr auto expectVerbs = std::to_array<MacAct>({
    {Verb::expectVisible, visible},
    {Verb::expectHidden, hidden},
    {Verb::expectNoRoom, withoutRoom},
    {Verb::expectWaiting, inVelko<waiting>},
    {Verb::expectSuggested, inVelko<suggested>},
    {Verb::expectState, inVelko<state>},
    {Verb::expectHealth, inVelko<health>},
    {Verb::expectTidied, inVelko<tidied>},
    {Verb::expectMenu, menu},
    {Verb::expectLogged, logged},
    {Verb::expectOpen, open},
    {Verb::expectClosed, closed},
    {Verb::expectSays, says},
    {Verb::expectLacks, lacks},
    {Verb::expectToolTip, toolTip},
    {Verb::expectClicked, inVelko<clicked>},
    {Verb::expectUnclicked, inVelko<unclicked>},
    {Verb::expectChoice, choice},
    {Verb::expectNoChoice, noChoice},
    {Verb::expectAnnounced, announced},
});

}  // namespace

std::span<const MacAct> expectations() {
    return expectVerbs;
}

}  // namespace velko::script
