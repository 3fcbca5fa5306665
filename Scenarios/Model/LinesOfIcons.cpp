#include <algorithm>
#include <array>
#include <string>

#include "Scenarios/Model/Heard.h"
#include "Simulator/Desktop/SimulatedDisplays.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/MenuBar/SimulatedMenuBar.h"

// What the log says of icons that come and go.

namespace velko::scenarios::model {

namespace {

using script::Verb;
using namespace std::chrono_literals;

constexpr auto popOut = 10s;
constexpr auto popOutRest = 300s;
constexpr auto showMe = 2500ms;

// Reveals

/// The style of the display that the broom is on.
RevealStyle styleNow(const Scene& scene) {
    const auto& reveal = scene.belief.layout.reveal;
    const auto displays = scene.world.mac().displays.displays();
    const auto& slots = scene.world.mac().menuBar().slots();
    const auto broom =
        std::ranges::find(slots, scene.world.mac().processes.ownPID(), &SimulatedMenuBar::Slot::pid);
    if (displays.empty()) {
        return reveal.otherStyle;
    }
    const Display* holder = &displays.front();
    for (const Display& display : displays) {
        const double down = displays.front().frame.maxY() - display.frame.maxY();
        if (broom != slots.end() && broom->frame.x >= display.frame.x &&
            broom->frame.x < display.frame.maxX() && broom->frame.y >= down &&
            broom->frame.y < down + display.frame.height) {
            holder = &display;
        }
    }
    const bool hasNotch = holder->safeAreaTop > 0 || holder->auxiliaryTopLeft.width > 0;
    return hasNotch ? reveal.notchedStyle : reveal.otherStyle;
}

bool mayToggle(const Scene& scene) {
    if (isBroomClick(scene.step)) {
        return meaningOfClick(scene) == ClickMeaning::toggles;
    }
    return scene.belief.layout.reveal.hover && scene.takesTime();
}

bool mayTuck(const Heard& heard) {
    const Scene& scene = heard.scene;
    const Belief& belief = scene.belief;
    const bool isDue = belief.layout.reveal.autoTuckSeconds > 0 && heard.at + late >= belief.tucksFrom;
    const bool isShelfClosed = belief.style == RevealStyle::shelf && !scene.takesTime();
    return isDue || isShelfClosed;
}

void revealed(Heard& heard) {
    Scene& scene = heard.scene;
    Belief& belief = scene.belief;
    const std::string& event = heard.parts[0];
    const Out next = belief.out.after(event);
    scene.require(heard.parts[1] == belief.out.text() && heard.parts[2] == next.text() && next != belief.out,
                  "a reveal leads from what is out to what should be",
                  heard.text + ", from " + belief.out.text());
    if (event == "toggle" || event == "toggleWithBuried") {
        scene.require(mayToggle(scene), "icons come out and go for a click or the pointer alone", heard.text);
    } else if (event == "autoTuck") {
        scene.require(mayTuck(heard), "icons tuck themselves when their time is over", heard.text);
        // A press on the broom is no click outside of the shelf: there the time was over.
        const bool isClickOutside = !scene.takesTime() && !isBroomClick(scene.step) &&
                                    scene.step.verb != Verb::pressEscape && scene.step.verb != Verb::close;
        if (isClickOutside && belief.style == RevealStyle::shelf) {
            belief.shelfClickedAt = heard.at;
        }
    }
    if (!belief.out.isRevealed() && next.isRevealed()) {
        belief.style = styleNow(scene);
    }
    if (event.starts_with("peek ")) {
        belief.openedAt = heard.at;
    }
    belief.out = next;
    belief.asked.insert(event);
    heard.rearm();
}

// Pop-outs, show-me and Live Activities

void poppedOut(Heard& heard) {
    Scene& scene = heard.scene;
    Belief& belief = scene.belief;
    const BundleID& app = heard.parts[0];
    scene.require(belief.layout.popOutOnChange && belief.present.contains(app) && !belief.isWaiting(app) &&
                      belief.sectionOf(app) == Section::tucked,
                  "only tucked icons pop out", app);
    const auto last = belief.lastPop.find(app);
    scene.require(last == belief.lastPop.end() || heard.at - last->second >= popOutRest - 1s,
                  "nothing pops out all the time", app);
    belief.popped[app] = heard.at + popOut;
    belief.lastPop[app] = heard.at;
    belief.asked.insert("pop out " + app);
}

void popOutOver(Heard& heard) {
    Belief& belief = heard.scene.belief;
    const BundleID& app = heard.parts[0];
    const auto end = belief.popped.find(app);
    heard.scene.require(end != belief.popped.end() && isAbout(heard.at, end->second),
                        "a pop-out lasts ten seconds", heard.text);
    belief.popped.erase(app);
    belief.asked.insert("pop out over " + app);
}

void shownAlone(Heard& heard) {
    Belief& belief = heard.scene.belief;
    belief.alone = heard.parts[0];
    belief.aloneUntil = heard.at + showMe;
    belief.asked.insert("show me " + heard.parts[0]);
}

void activityBegan(Heard& heard) {
    Belief& belief = heard.scene.belief;
    heard.scene.require(!belief.isActivityOn && belief.layout.showLiveActivities,
                        "room is made for a Live Activity once, and where that is wanted");
    belief.isActivityOn = true;
    belief.asked.insert("live activity");
}

void activityEnded(Heard& heard) {
    Belief& belief = heard.scene.belief;
    heard.scene.require(belief.isActivityOn, "a Live Activity ends once");
    belief.isActivityOn = false;
    belief.isActivityDismissed = false;
    belief.asked.insert("live activity over");
}

void activityDismissed(Heard& heard) {
    Belief& belief = heard.scene.belief;
    heard.scene.require(belief.isActivityOn && !belief.isActivityDismissed && mayToggle(heard.scene),
                        "a click tidies while a Live Activity is on");
    belief.isActivityDismissed = true;
    belief.out = {};
    belief.asked.insert("live activity dismissed");
}

constexpr auto iconLines = std::to_array<LineRow>({
    {"liveactivity", "iPhone Live Activity running: showing the whole bar", activityBegan},
    {"liveactivity", "Live Activity over: tidying again", activityEnded},
    {"liveactivity", "broom clicked: tidying anyway until this activity ends", activityDismissed},
    {"popout", "* changed: out for 10.0 seconds", poppedOut},
    {"popout", "pop out over *", popOutOver},
    {"reveal", "*: * -> *", revealed},
    {"showme", "showing *", shownAlone},
});

}  // namespace

std::span<const LineRow> linesOfIcons() {
    return iconLines;
}

}  // namespace velko::scenarios::model
