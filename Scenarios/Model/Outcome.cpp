#include <algorithm>
#include <cmath>
#include <string>

#include "Scenarios/Model/Scene.h"
#include "Simulator/Desktop/SimulatedDisplays.h"
#include "Simulator/Desktop/SimulatedPointer.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Desktop/SimulatedWindows.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "Simulator/MenuBar/SimulatedMenuBar.h"
#include "Velko/Apps/MenuBarApps.h"
#include "VelkoEngine/MenuBar/MenuBarStrip.h"

// What should have come about by now, and what should be there to see.

namespace velko::scenarios::model {

namespace {

using namespace std::chrono_literals;

constexpr auto slack = 1500ms;  ///< for work that holds up the main thread, and a second look at an open menu
constexpr auto hour = 3600s;

bool passedAnHour(const Scene& scene) {
    const auto beats = [&](Scene::Uptime at) { return (at - scene.belief.startedAt) / hour; };
    return beats(scene.now()) != beats(scene.begun);
}

/// What the autopilot has let go and what it has put off may change at each full hour, and with each answer.
void followOffer(Scene& scene, const AppValues& values) {
    auto& autopilot = scene.belief.layout.autopilot;
    if (autopilot.offerPending && !values.layout.autopilot.offerPending) {
        scene.require(scene.suggestions().empty() || scene.takesTime(),
                      "an offer stands until it is answered");
        autopilot.offerPending = false;
    }
    if (scene.belief.isPutOff && !values.noteDeferred && passedAnHour(scene)) {
        scene.belief.isPutOff = false;
    }
}

/// Who is known, and since when, is noticed by the by.
void followSeen(Scene& scene, const Layout& layout) {
    Layout& mine = scene.belief.layout;
    if (layout.seenApps && mine.seenApps) {
        for (const BundleID& app : *layout.seenApps) {
            const bool isNew = !mine.seenApps->contains(app);
            const bool asks = mine.hasCompletedSetup && mine.askAboutNewIcons && !mine.knownGraceUntil;
            scene.require(!isNew || !asks || mine.sections.contains(app) || scene.takesTime(),
                          "new icons are asked about", app);
        }
    }
    mine.seenApps = layout.seenApps;
    mine.firstSeen = layout.firstSeen;
    mine.knownGraceUntil = layout.knownGraceUntil;
    mine.lastClicked = layout.lastClicked;
    mine.clickDays = layout.clickDays;
    mine.autopilot.watchingSince = layout.autopilot.watchingSince;
    mine.autopilot.lastOffered = layout.autopilot.lastOffered;
}

std::string differenceBetween(const Layout& mine, const Layout& layout) {
    if (mine.sections != layout.sections) {
        return "sections";
    }
    if (mine.inbox != layout.inbox) {
        return "inbox";
    }
    if (mine.reveal != layout.reveal) {
        return "reveal";
    }
    if (mine.autopilot.snoozedUntil != layout.autopilot.snoozedUntil) {
        return "snoozedUntil";
    }
    return mine.autopilot != layout.autopilot ? "autopilot" : "something else";
}

/// The user's own edits may come a second apart.
void followSnoozes(Layout& mine, const Layout& layout) {
    for (auto& [app, until] : mine.autopilot.snoozedUntil) {
        const auto other = layout.autopilot.snoozedUntil.find(app);
        if (other != layout.autopilot.snoozedUntil.end() && std::chrono::abs(other->second - until) <= 2s) {
            until = other->second;
        }
    }
}

void compareLayout(Scene& scene, const AppValues& values) {
    followOffer(scene, values);
    followSeen(scene, values.layout);
    followSnoozes(scene.belief.layout, values.layout);
    scene.require(scene.belief.layout == values.layout, "the layout is what was made of it",
                  differenceBetween(scene.belief.layout, values.layout));
}

void compareReveal(Scene& scene, const AppValues& values) {
    const Belief& belief = scene.belief;
    scene.require(describe(values.state) == belief.out.text(), "what is out is what should be",
                  describe(values.state) + " instead of " + belief.out.text());
    scene.require(!belief.out.isRevealed() || values.activeStyle == belief.style,
                  "icons come out in the style of the broom's display");
    BundleIDs popped;
    for (const auto& [app, end] : belief.popped) {
        popped.insert(app);
    }
    scene.require(values.poppedOut == popped, "only what has changed is out");
    scene.require(values.showingMe == belief.alone, "one app shows alone while it should",
                  values.showingMe.value_or("none") + " instead of " + belief.alone.value_or("none"));
    scene.require(values.liveActivityShowing == belief.isActivityOn &&
                      values.liveActivityDismissed == belief.isActivityDismissed,
                  "room is made for a Live Activity while there is one");
    scene.require(values.noteDeferred == belief.isPutOff, "what was put off stays put off");
}

void compareIcons(Scene& scene) {
    const SimulatedMac& mac = scene.world.mac();
    const Belief& belief = scene.belief;
    if (mac.framework.unanswered() > 0 || belief.isRefused || belief.isAllShown) {
        return;
    }
    const auto shown = belief.shown();
    const auto visible = mac.visibleIcons();
    for (const auto& slot : mac.menuBar().slots()) {
        const auto app = mac.workspace.bundleID(slot.pid);
        if (app && belief.isOthers(*app)) {
            const bool shows = std::ranges::count(visible, *app) > 0;
            scene.require(shows == (!shown || shown->contains(*app)), "who should show does, and nobody else",
                          *app);
        }
    }
}

bool isShelfInHand(const Scene& scene) {
    return scene.world.mac().surfaces.surface(Surfaces::Kind::shelf).isInHand();
}

/// For how long the pointer may hold out what would go.
std::chrono::seconds heldByPointer(const Scene& scene) {
    SimulatedMac& mac = scene.world.mac();
    const Point pointer = mac.pointer.location();
    const auto shelf = mac.surfaces.surface(Surfaces::Kind::shelf).frame();
    const bool isInBar =
        MenuBarStrip::holds(mac.displays.displays(), mac.displays.statusBarThickness(), pointer);
    return isInBar || (shelf && shelf->contains(pointer)) ? 60s : 0s;
}

}  // namespace

void expire(Scene& scene, Scene::Uptime at) {
    Belief& belief = scene.belief;
    if (belief.alone && at >= belief.aloneUntil) {
        belief.alone.reset();
        belief.asked.insert("show me done");
    }
}

void noteTurned(Scene& scene, const Happening& turn) {
    Belief& belief = scene.belief;
    if (turn.kind == Happening::Kind::noteClosed) {
        belief.noteClosedAt = turn.at;
        belief.putOff = scene.suggestions();
        belief.isPutOff = scene.asksSomething();
    }
}

void checkDeadlines(Scene& scene, Belief::Uptime touched) {
    const Belief& belief = scene.belief;
    const auto now = scene.now();
    for (const auto& [app, end] : belief.popped) {
        scene.require(now < end + slack, "a pop-out ends", app);
    }
    const auto seconds = std::chrono::seconds(belief.layout.reveal.autoTuckSeconds);
    const bool tucks = belief.out.isRevealed() && belief.out.opened.empty() && seconds > 0s &&
                       !scene.world.mac().windows.menuOwner() && !isShelfInHand(scene);
    scene.require(
        !tucks || now < std::max(belief.tucksFrom, touched + seconds) + heldByPointer(scene) + slack,
        "revealed icons tuck themselves");
}

void compare(Scene& scene) {
    const AppValues& values = scene.world.velko()->values();
    compareReveal(scene, values);
    compareLayout(scene, values);
    BundleIDs present;
    for (const PresentApp& app : presentApps(values)) {
        present.insert(app.bundleID);
    }
    scene.require(present == scene.belief.present, "the log says who is there");
    const HealthFacts& problems = values.problems;
    scene.require(problems.engineUnavailable == scene.belief.isEngineMissing &&
                      problems.layoutUnreadable.has_value() == scene.belief.isUnreadable &&
                      problems.trustMissing == scene.belief.isUntrusted,
                  "the log says what is wrong");
    compareIcons(scene);
}

}  // namespace velko::scenarios::model
