#include "Scenarios/Rules/Invariants.h"

#include <algorithm>
#include <ranges>
#include <string_view>
#include <utility>

#include "Scenarios/SampleApps.h"
#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Accessibility/SimulatedElement.h"
#include "Simulator/Desktop/SimulatedPointer.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/Machine/SimulatedSession.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/App/AppController.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"

namespace velko::scenarios {

namespace {

using script::Verb;

bool isEvent(Verb verb) {
    using enum Verb;
    return verb != wait && verb != say &&
           verb < expectVisible;  // expectations come last in the list of verbs
}

bool lastApplyFailed(const Log& log) {
    const auto isAboutEngine = [](std::string_view line) { return line.contains("  [engine] "); };
    const auto newestFirst = log.lines() | std::views::reverse;
    const auto line = std::ranges::find_if(newestFirst, isAboutEngine);
    return line != newestFirst.end() && (*line).contains("] FAILED (");
}

}  // namespace

Invariants::Invariants(World& world)
    : world_(world),
      nextOnStart_(std::exchange(world.onStart, nullptr)),
      nextOnMenuBarChange_(std::exchange(world.mac().onMenuBarChange, nullptr)),
      systemItems_(world.mac().visibleSystemItems()),
      layoutFile_(world),
      faces_(world),
      room_(world),
      model_(world) {
    world_.onStart = [this](AppController& velko) { watch(velko); };
    world_.mac().onMenuBarChange = [this] { barChanged(); };
    if (AppController* velko = world_.velko()) {
        watch(*velko);
    }
}

Invariants::~Invariants() {
    world_.onStart = std::move(nextOnStart_);
    world_.mac().onMenuBarChange = std::move(nextOnMenuBarChange_);
}

void Invariants::watch(AppController& velko) {
    notices_ = velko.observe([this] { observerTold(); });
    shownAllAt_.reset();
    if (nextOnStart_) {
        nextOnStart_(velko);
    }
}

void Invariants::require(bool holds, const std::string& rule, const std::function<std::string()>& detail) {
    if (!holds && !breach_) {
        breach_ = rule + (detail ? ": " + detail() : "");
    }
}

// At every moment

void Invariants::barChanged() {
    require(world_.mac().visibleSystemItems() == systemItems_, "the system's items always show");
    if (const AppController* velko = world_.velko()) {
        require(std::ranges::count(world_.mac().visibleIcons(), velko->ownBundleID()) == 1,
                "the broom always shows");
        if (!world_.mac().framework.inForce() && !velko->engine().current().isShowAll()) {
            // Velko itself knows what it has done only after this turn.
            world_.mac().mainThread.happen({}, [this] { hidingEnded(); });
        }
    }
    if (nextOnMenuBarChange_) {
        nextOnMenuBarChange_();
    }
}

void Invariants::hidingEnded() {
    if (const AppController* velko = world_.velko(); velko != nullptr && !mayShowAll(*velko)) {
        require(velko->currentPlan().isShowAll(), "icons never flash up between two plans");
    }
}

void Invariants::observerTold() {
    require(!std::exchange(wasToldThisTurn_, true), "observers are told once per turn");
    world_.mac().mainThread.happen({}, [this] { wasToldThisTurn_ = false; });
}

// After every step

std::optional<std::string> Invariants::check(const script::Step& done) {
    remember(done);
    runWhatIsDue();
    if (AppController* velko = world_.velko()) {
        checkEngine(*velko);
        checkValues(*velko);
        checkCalm(*velko);
        const auto wrong = faces_.check(*velko, isCalm());
        require(!wrong, wrong.value_or(""));
        const auto roomless = room_.check(*velko, isCalm());
        require(!roomless, roomless.value_or(""));
        checkRest(*velko, done);
    } else {
        room_.forget();
        checkWhileGone();
    }
    checkManners();
    if (const auto wrong = layoutFile_.check(done)) {
        require(false, *wrong);
    }
    if (const auto wrong = model_.check(done)) {
        require(false, *wrong);
    }
    return std::exchange(breach_, std::nullopt);
}

void Invariants::remember(const script::Step& done) {
    if (isEvent(done.verb)) {
        calmSince_ = world_.mac().mainThread.now();
    }
    if (world_.velko() != nullptr &&
        (done.verb == Verb::showAll || (done.verb == Verb::choose && done.text == "Show All") ||
         (done.verb == Verb::press && done.control == "show-all"))) {
        shownAllAt_ = world_.velko()->lastHidingChange();
    }
}

/// Work that blocks moves the clock on, and more work falls due in that time.
void Invariants::runWhatIsDue() {
    bool isRunning = true;
    while (std::exchange(isRunning, false)) {
        const auto before = world_.mac().mainThread.now();
        world_.mac().advance({});
        isRunning = world_.mac().mainThread.now() != before;
    }
}

/// Whether everything may show although Velko wants to hide something.
bool Invariants::mayShowAll(const AppController& velko) const {
    // What was asked for meanwhile may not be in force yet.
    const bool isStillShown =
        velko.lastHidingChange() == shownAllAt_ || world_.mac().framework.unanswered() > 0;
    return (shownAllAt_ && isStillShown) || lastApplyFailed(world_.log());
}

void Invariants::checkWhileGone() {
    require(!world_.mac().framework.inForce(), "without Velko everything shows");
    require(
        world_.mac().registered() == SimulatedMac::Registered{} && world_.mac().pointer.moveObservers() == 0,
        "a Velko that is gone leaves nothing");
    wakeUps_ = world_.mac().cost().wakeUps;
}

void Invariants::checkEngine(const AppController& velko) {
    const SimulatedFramework& framework = world_.mac().framework;
    const VisibilityPlan& current = velko.engine().current();
    const std::size_t wanted = current.isShowAll() ? 0 : 1;
    require(framework.activeAssertions() == wanted, "no assertion but the one in force is alive",
            [&] { return std::to_string(framework.activeAssertions()) + " with plan " + describe(current); });
    const auto inForce = framework.inForce();
    require(!inForce || current.allowed() == inForce->bundleIDs,
            "the system hides what Velko thinks it hides");
    if (framework.unanswered() == 0 && !(current.isShowAll() && mayShowAll(velko))) {
        require(current == velko.currentPlan(), "the plan in force follows from the state",
                [&] { return describe(current) + " instead of " + describe(velko.currentPlan()); });
    }
}

void Invariants::checkValues(const AppController& velko) {
    const AppValues& values = velko.values();
    const BundleIDs owners = ownersOf(velko);
    const auto tidied = std::ranges::count_if(
        owners, [&](const BundleID& app) { return velko.engine().current().hides(app); });
    require(std::cmp_equal(values.tidiedCount, tidied), "the count of tidied apps is right",
            [&] { return std::to_string(values.tidiedCount) + " instead of " + std::to_string(tidied); });
    const auto& inbox = values.layout.inbox;
    require(std::set(inbox.begin(), inbox.end()).size() == inbox.size(), "no app waits twice");
    const Section waiting = values.layout.leaveNewIconsOut ? Section::bar : Section::tucked;
    require(std::ranges::all_of(inbox,
                                [&](const BundleID& app) {
                                    return values.layout.section(app) == waiting &&
                                           !AllowlistPlanner::isAlwaysAllowed(app);
                                }),
            "who waits for an answer waits where the user wants that");
    require(values.layout.popOutOnChange || values.poppedOut.empty(), "none is out while pop-outs are off");
    require(!values.problems.trustMissing || world_.mac().registered().taps == 0,
            "without the permission nobody listens for clicks");
    require(world_.log().lines().size() <= Log::maxLines, "the log in memory stays small");
}

/// Mistakes after which a real system would ask the user for a permission, or end Velko.
void Invariants::checkManners() {
    require(world_.mac().pointer.inputMonitoringPrompts() == 0, "nobody is asked for Input Monitoring");
    require(world_.mac().accessibility.ownAnswersElsewhere() == 0,
            "Velko's own elements are asked on the main thread only");
}

bool Invariants::isCalm() const {
    return world_.mac().mainThread.now() - calmSince_ >= calm;
}

}  // namespace velko::scenarios
