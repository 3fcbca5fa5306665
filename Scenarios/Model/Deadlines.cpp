#include <algorithm>
#include <chrono>
#include <string>

#include "Scenarios/Model/StepCheck.h"
#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Desktop/SimulatedPointer.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/Machine/SimulatedSession.h"
#include "Simulator/MenuBar/SimulatedMenuBar.h"
#include "Velko/App/AppController.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/MenuBar/MenuBarStrip.h"

// What should have come about by itself by now.

namespace velko::scenarios::model {

namespace {

using script::Verb;
using namespace std::chrono_literals;

constexpr auto slack =
    1500ms;  ///< for work that blocks the main thread, and for a second look at an open menu

// While nobody looks at Velko, the system delays its timers to one turn every eight seconds.
constexpr auto offerTime = 2h + 1min;  ///< the autopilot looks once an hour
constexpr auto activityTime = 60s;     ///< a look every five seconds, of which the first only begins to count
constexpr auto watchTime = 20s;        ///< until a tucked app has surely been looked at
constexpr auto newIconTime = 70s;      ///< until an icon that has come is looked at, too
constexpr auto popOutTime = 15s;       ///< a look every two seconds
constexpr auto wholeRest = 301s;       ///< after a pop-out, and a second to spare

bool isShelfInHand(const StepCheck& check) {
    return check.world.mac().surfaces.surface(Surfaces::Kind::shelf).isInHand();
}

/// How long the pointer may keep revealed icons out.
std::chrono::seconds heldByPointer(const StepCheck& check) {
    SimulatedMac& mac = check.world.mac();
    const Point pointer = mac.pointer.location();
    const auto shelf = mac.surfaces.surface(Surfaces::Kind::shelf).frame();
    const bool isInBar =
        MenuBarStrip::holds(mac.displays.displays(), mac.displays.statusBarThickness(), pointer);
    return isInBar || (shelf && shelf->contains(pointer)) ? 60s : 0s;
}

/// Remembers since when something holds.
template <class Moment>
void keepSince(std::optional<Moment>& since, bool holds, Moment now) {
    since = holds ? std::optional(since.value_or(now)) : std::nullopt;
}

/// While nobody is at the Mac, Velko rests.
bool isAttended(const StepCheck& check) {
    return check.world.mac().session.isAttended();
}

void checkOffer(StepCheck& check) {
    const Expected& expected = check.expected;
    auto& since = check.expected.awaited.offer;
    const bool canOffer = expected.isWell() && isAttended(check) &&
                          check.world.velko()->values().inventoryLoaded &&
                          isOfferTime(expected.layout, check.date()) && !check.suggestions().empty();
    keepSince(since, canOffer, check.now());
    check.require(!since || check.now() < *since + offerTime, "what there is to suggest is offered");
}

void checkActivity(StepCheck& check) {
    const auto& running = check.world.mac().processes.running();
    const bool isDrawn = std::ranges::any_of(running, [](const SimulatedProcess& process) {
        return process.app.name == "WidgetRenderer_Activities" && process.cores > 0;
    });
    auto& since = check.expected.awaited.activity;
    const bool isHeeded = check.expected.isWell() && isAttended(check);
    keepSince(since, isDrawn && isHeeded && check.expected.layout.showLiveActivities, check.now());
    check.require(!since || check.expected.isActivityOn || check.now() < *since + activityTime,
                  "room is made for a Live Activity soon after it has begun");
}

/// Whether every app answers Velko in time.
bool answersEverybody(const SimulatedMac& mac) {
    return mac.accessibility.isPermitted() &&
           std::ranges::all_of(mac.processes.running(), [&](const SimulatedProcess& process) {
               return mac.accessibility.answersWithin(process.pid, std::chrono::milliseconds(50));
           });
}

/// Steps after which Velko may need more time than usual to see a change, or lose what it compares with.
bool disturbsWatch(Verb verb) {
    using enum Verb;
    constexpr std::array disturbing{hang,        unhang,     slow,       stall, iconHang,  iconUnhang,
                                    iconAdd,     iconRemove, launch,     quit,  crash,     trustGrant,
                                    trustRevoke, sleep,      fileReload, nap,   velkoStart};
    return std::ranges::count(disturbing, verb) > 0;
}

/// What a tucked app's icons show, and of which process; nothing where Velko need not notice a change.
std::optional<std::string> lookOf(const StepCheck& check, const BundleID& app) {
    const Expected& expected = check.expected;
    const SimulatedMac& mac = check.world.mac();
    if (expected.layout.neverPopOut.contains(app) || expected.layout.quietUntil.contains(app) ||
        expected.sectionOf(app) != Section::tucked || expected.isWaiting(app) || !expected.isOthers(app) ||
        mac.workspace.pids(app).size() != 1) {
        return std::nullopt;
    }
    std::string look;
    for (const auto& slot : mac.menuBar().slots()) {
        if (slot.bundleID != app) {
            continue;
        }
        const auto* const badge = std::get_if<std::string>(&slot.icon.value);
        look += std::to_string(slot.pid) + '|' + slot.icon.title.value_or("") + '|' +
                (badge == nullptr ? "" : *badge) + '\n';
        if (slot.element->delay > 0s) {
            return std::nullopt;
        }
    }
    return look;
}

void followLook(StepCheck& check, const BundleID& app, const std::string& look) {
    Awaited& awaited = check.expected.awaited;
    const auto before = awaited.looks.find(app);
    const bool isSame = before != awaited.looks.end() && before->second == look;
    const auto since = awaited.watched.find(app);
    if (isSame && since != awaited.watched.end()) {
        return;
    }
    const auto popped = check.expected.lastPop.find(app);
    const bool isRested = popped == check.expected.lastPop.end() || check.now() >= popped->second + wholeRest;
    const bool isChange = check.step.verb == Verb::iconTitle || check.step.verb == Verb::iconBadge;
    const bool isFirst = awaited.changed.erase(app) == 0;  // a second change may undo the first
    if (isChange && isFirst && isRested && since != awaited.watched.end() &&
        check.now() >= since->second + watchTime) {
        awaited.changed[app] = check.now();
    }
    awaited.watched[app] = check.now();
    awaited.looks[app] = look;
}

/// Who has popped out twelve times within an hour is quiet, unless a click has shown that it is welcome.
void checkPopsAllTheTime(StepCheck& check) {
    constexpr std::size_t most = 12;
    const Layout& layout = check.expected.layout;
    for (const auto& [app, pops] : check.expected.pops) {
        const bool areMany = pops.size() >= most && pops.back() - *(pops.end() - most) < 1h;
        const auto clicked = layout.lastClicked.find(app);
        const bool isUnclicked = clicked == layout.lastClicked.end() ||
                                 check.date() - clicked->second > check.now() - check.expected.startedAt;
        check.require(!areMany || !isUnclicked, "who pops out all the time is made quiet", app);
    }
}

void checkPopOuts(StepCheck& check) {
    Awaited& awaited = check.expected.awaited;
    if (disturbsWatch(check.step.verb)) {
        awaited.undisturbedFrom = check.now() + (check.step.verb == Verb::iconAdd ? newIconTime : 0s);
    }
    const bool isWatching = check.expected.isWell() && isAttended(check) &&
                            check.expected.layout.popOutOnChange && !check.expected.out.isPresenting &&
                            !disturbsWatch(check.step.verb) && check.now() >= awaited.undisturbedFrom &&
                            answersEverybody(check.world.mac());
    std::map<BundleID, std::string> looks;
    for (const BundleID& app : isWatching ? check.expected.present : BundleIDs()) {
        if (const auto look = lookOf(check, app)) {
            looks.emplace(app, *look);
        }
    }
    const auto isGone = [&](const auto& entry) { return !looks.contains(entry.first); };
    std::erase_if(awaited.watched, isGone);
    std::erase_if(awaited.looks, isGone);
    std::erase_if(awaited.changed, isGone);
    for (const auto& [app, look] : looks) {
        followLook(check, app, look);
    }
    checkPopsAllTheTime(check);
    for (const auto& [app, at] : awaited.changed) {
        check.require(check.now() < at + popOutTime, "a tucked icon that changes pops out", app);
    }
}

}  // namespace

void checkDeadlines(StepCheck& check, Expected::Uptime touched) {
    const Expected& expected = check.expected;
    const auto now = check.now();
    for (const auto& [app, end] : expected.popped) {
        check.require(now < end + slack, "a pop-out ends", app);
    }
    const auto seconds = std::chrono::seconds(expected.layout.reveal.autoTuckSeconds);
    const bool tucks = expected.out.isRevealed() && !expected.isPinned && expected.out.opened.empty() &&
                       seconds > 0s && !check.world.mac().windows.menuOwner() && !isShelfInHand(check);
    check.require(
        !tucks || now < std::max(expected.tucksFrom, touched + seconds) + heldByPointer(check) + slack,
        "revealed icons tuck themselves");
    const std::chrono::minutes presents(expected.layout.presentingMinutes);
    check.require(
        !expected.out.isPresenting || presents == 0min || now < expected.presentedAt + presents + watchTime,
        "presenting ends when its time is over");
    checkOffer(check);
    checkActivity(check);
    checkPopOuts(check);
}

}  // namespace velko::scenarios::model
