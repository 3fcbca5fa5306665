#include <algorithm>
#include <cmath>
#include <string>

#include "Scenarios/Model/StepCheck.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "Simulator/MenuBar/SimulatedMenuBar.h"
#include "Velko/App/AppController.h"
#include "Velko/Apps/MenuBarApps.h"
#include "VelkoEngine/MenuBar/MenuBarStrip.h"

// What should be there to see after a step.

namespace velko::scenarios::model {

namespace {

using namespace std::chrono_literals;

constexpr auto hour = 3600s;

bool passedAnHour(const StepCheck& check) {
    const auto beats = [&](StepCheck::Uptime at) { return (at - check.expected.startedAt) / hour; };
    return beats(check.now()) != beats(std::max(check.expected.attendedAt, check.expected.startedAt));
}

/// What the autopilot offers, and what was put off, may change once an hour and with each answer.
void followOffer(StepCheck& check, const AppValues& values) {
    auto& autopilot = check.expected.layout.autopilot;
    if (autopilot.offerPending && !values.layout.autopilot.offerPending) {
        check.require(check.suggestions().empty() || check.takesTime(),
                      "an offer stands until it is answered");
        autopilot.offerPending = false;
    }
    if (check.expected.isPutOff && !values.noteDeferred && passedAnHour(check)) {
        // In a longer wait, news may have come and gone.
        check.require(check.now() - check.begun > 2 * hour ||
                          !std::ranges::includes(check.expected.putOff, check.suggestions()),
                      "what was put off is asked about again when there is news");
        check.expected.isPutOff = false;
    }
}

/// Which apps are known, and since when, is copied from Velko.
void followSeen(StepCheck& check, const Layout& layout) {
    Layout& mine = check.expected.layout;
    if (layout.seenApps && mine.seenApps) {
        for (const BundleID& app : *layout.seenApps) {
            const bool isNew = !mine.seenApps->contains(app);
            const bool asks = mine.hasCompletedSetup && mine.askAboutNewIcons && !mine.knownGraceUntil;
            check.require(!isNew || !asks || mine.sections.contains(app) || check.takesTime(),
                          "new icons are asked about", app);
        }
    }
    mine.seenApps = layout.seenApps;
    mine.firstSeen = layout.firstSeen;
    mine.waitingGoneSince = layout.waitingGoneSince;
    mine.knownGraceUntil = layout.knownGraceUntil;
    if (mine.setupPutOff && layout.setupPutOff) {
        mine.setupPutOff = layout.setupPutOff;  // the moment is of no importance
    }
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
    if (mine.quietUntil != layout.quietUntil || mine.neverPopOut != layout.neverPopOut) {
        return "who may pop out";
    }
    return mine.autopilot != layout.autopilot ? "autopilot" : "something else";
}

/// In a long wait the day may have changed since, and the model has read the clock only after it. What was
/// over then is forgotten.
void followQuiet(StepCheck& check, const Layout& layout) {
    Layout& mine = check.expected.layout;
    for (auto& [app, until] : mine.quietUntil) {
        const auto other = layout.quietUntil.find(app);
        const auto ahead = until - (other == layout.quietUntil.end() ? until : other->second);
        if (ahead > 0s && ahead <= check.now() - check.begun + std::chrono::days(1)) {
            until = other->second;
        }
    }
    std::erase_if(mine.quietUntil, [&](const auto& entry) {
        return entry.second <= check.date() && !layout.quietUntil.contains(entry.first);
    });
}

/// The model and Velko may read the clock a second apart.
void followSnoozes(Layout& mine, const Layout& layout) {
    for (auto& [app, until] : mine.autopilot.snoozedUntil) {
        const auto other = layout.autopilot.snoozedUntil.find(app);
        if (other != layout.autopilot.snoozedUntil.end() && std::chrono::abs(other->second - until) <= 2s) {
            until = other->second;
        }
    }
}

void compareLayout(StepCheck& check, const AppValues& values) {
    followSeen(check, values.layout);
    followSnoozes(check.expected.layout, values.layout);
    followQuiet(check, values.layout);
    check.require(check.expected.layout == values.layout, "the layout is what was made of it",
                  differenceBetween(check.expected.layout, values.layout));
    check.expected.keepOwn();
    const Layout& own = check.world.velko()->ownLayout();
    check.require(check.expected.ownLayout == own, "the user's own layout is as they want it",
                  differenceBetween(check.expected.ownLayout, own));
}

void compareReveal(StepCheck& check, const AppValues& values) {
    const Expected& expected = check.expected;
    check.require(describe(values.state) == expected.out.text(), "what is out is what should be",
                  describe(values.state) + " instead of " + expected.out.text());
    check.require(!expected.out.isRevealed() || values.activeStyle == expected.style,
                  "icons come out in the style of the broom's display");
    check.require(values.isOnWideDisplay == expected.isWide, "the log says when nothing is hidden");
    BundleIDs popped;
    for (const auto& [app, end] : expected.popped) {
        popped.insert(app);
    }
    check.require(values.poppedOut == popped, "only what has changed is out");
    check.require(values.showingMe == expected.alone, "one app shows alone while it should",
                  values.showingMe.value_or("none") + " instead of " + expected.alone.value_or("none"));
    check.require(values.liveActivityShowing == expected.isActivityOn &&
                      values.liveActivityDismissed == expected.isActivityDismissed,
                  "room is made for a Live Activity while there is one");
    check.require(values.noteDeferred == expected.isPutOff, "what was put off stays put off");
}

void compareIcons(StepCheck& check) {
    const SimulatedMac& mac = check.world.mac();
    const Expected& expected = check.expected;
    if (mac.framework.unanswered() > 0 || expected.isRefused || expected.isAllShown) {
        return;
    }
    const auto shown = expected.shown();
    const auto visible = mac.visibleIcons();
    for (const auto& slot : mac.menuBar().slots()) {
        const auto app = mac.workspace.bundleID(slot.pid);
        if (app && expected.isOthers(*app)) {
            const bool shows = std::ranges::count(visible, *app) > 0 || slot.isSwallowed;
            check.require(shows == (!shown || shown->contains(*app)), "who should show does, and nobody else",
                          *app);
        }
    }
}

}  // namespace

void expire(StepCheck& check, StepCheck::Uptime at) {
    Expected& expected = check.expected;
    if (expected.alone && at >= expected.aloneUntil) {
        expected.alone.reset();
        expected.asked.insert("show me done");
    }
}

void noteTurned(StepCheck& check, const Happening& turn) {
    Expected& expected = check.expected;
    if (turn.kind == Happening::Kind::noteClosed) {
        expected.noteClosedAt = turn.at;
        expected.putOff = check.suggestions();
        expected.isPutOff = check.asksSomething();
    }
}

void compare(StepCheck& check) {
    const AppValues& values = check.world.velko()->values();
    followOffer(check, values);
    compareReveal(check, values);
    compareLayout(check, values);
    BundleIDs present;
    for (const PresentApp& app : presentApps(values)) {
        present.insert(app.bundleID);
    }
    check.require(present == check.expected.present, "the log says who is there");
    const HealthFacts& problems = values.problems;
    check.require(problems.engineUnavailable == check.expected.isEngineMissing &&
                      problems.layoutUnreadable.has_value() == check.expected.isUnreadable &&
                      problems.trustMissing == check.expected.isUntrusted,
                  "the log says what is wrong");
    compareIcons(check);
}

}  // namespace velko::scenarios::model
