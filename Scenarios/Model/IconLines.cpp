#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "Scenarios/Model/LogLines.h"
#include "Simulator/Desktop/SimulatedPointer.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/MenuBar/SimulatedMenuBar.h"
#include "VelkoCore/Time/Date.h"

// Lines of the log about icons that come and go.

namespace velko::scenarios::model {

namespace {

using script::Verb;
using namespace std::chrono_literals;

constexpr auto popOut = 10s;
constexpr auto popOutRest = 300s;
constexpr auto showMe = 2500ms;
constexpr auto mutingTime = 1h + 1s;
constexpr auto mutingPops = 12;

// Reveals

/// The style of the display that the broom is on.
RevealStyle styleNow(const StepCheck& check) {
    const auto& reveal = check.expected.layout.reveal;
    const auto displays = check.world.mac().displays.displays();
    const auto& slots = check.world.mac().menuBar().slots();
    const auto broom =
        std::ranges::find(slots, check.world.mac().processes.ownPID(), &SimulatedMenuBar::Slot::pid);
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

/// The event of a stale right click says nothing. It counts as a left click, unless Velko heard the press and
/// knows that it was on the broom.
bool mayPassForLeftClick(const StepCheck& check) {
    return check.step.verb == Verb::rightClickBroom && check.step.word == "stale";
}

/// The system may report a click without its keys. If the click tap does not hear it either, Velko takes it
/// for a plain click.
bool losesItsKeys(const StepCheck& check) {
    return check.step.verb == Verb::controlClickBroom && check.world.mac().pointer.listeningTaps() == 0;
}

bool mayToggle(const StepCheck& check) {
    if (check.step.verb == Verb::press && check.step.control == "show-buried") {
        return true;
    }
    const auto& clickedAt = check.expected.broomClickedAt;
    const bool mayBeLate = clickedAt && check.begun - *clickedAt < late;
    // Whether the press has tucked the icons, or their time was over just then, can't be made out.
    const bool isUnclear = isBroomClick(check.step) && check.hasJustTucked();
    if (mayPassForLeftClick(check) || mayBeLate || isUnclear || isCommand(check.step) ||
        check.step.verb == Verb::pressKeys) {
        return true;
    }
    // A button that is held down takes a moment, in which a rest on the broom may be long enough.
    if (check.expected.layout.reveal.hover && (check.takesTime() || isPressOnBroom(check.step))) {
        return true;
    }
    return (isBroomClick(check.step) || losesItsKeys(check)) &&
           meaningOfClick(check) == ClickMeaning::toggles;
}

bool mayTuck(const LogLine& line) {
    const StepCheck& check = line.check;
    const Expected& expected = check.expected;
    if (expected.isPinned) {
        // The search takes the place of the shelf.
        const Verb verb = check.step.verb;
        return verb == Verb::pressEscape || verb == Verb::close || verb == Verb::pressKeys ||
               verb == Verb::choose || isCommand(check.step);
    }
    const bool isDue = expected.layout.reveal.autoTuckSeconds > 0 && line.at + late >= expected.tucksFrom;
    const bool isShelfClosed = expected.style == RevealStyle::shelf && !check.takesTime();
    return isDue || isShelfClosed || isCommand(check.step);
}

void revealed(LogLine& line) {
    StepCheck& check = line.check;
    Expected& expected = check.expected;
    const std::string& event = line.parts[0];
    const Out next = expected.out.after(event);
    check.require(
        line.parts[1] == expected.out.text() && line.parts[2] == next.text() && next != expected.out,
        "a reveal leads from what is out to what should be", line.text + ", from " + expected.out.text());
    if (event == "toggle" || event == "toggleWithBuried") {
        check.require(mayToggle(check), "icons come out and go for a click or the pointer alone", line.text);
    } else if (event == "autoTuck") {
        check.require(mayTuck(line), "icons tuck themselves when their time is over", line.text);
        // While Velko does not know where the broom is, a press on it is a click outside of the shelf, too.
        const bool isClickOutside = !check.takesTime() && check.step.verb != Verb::pressEscape &&
                                    check.step.verb != Verb::close && !isCommand(check.step);
        if (isClickOutside && expected.style == RevealStyle::shelf) {
            expected.shelfClickedAt = line.at;
        }
        expected.tuckedAt = line.at;
    }
    if (event == "shareStarted") {
        expected.popped.clear();
        expected.alone.reset();
        expected.presentedAt = line.at;
        expected.presentedSince = check.date();
    }
    if (event.starts_with("share")) {
        const bool mayEnd = expected.asked.contains("presenting is over");
        check.require(mayEnd || !check.leavesVelkoAlone(), "the user alone decides", line.text);
        expected.asked.erase("presenting is over");
    }
    if (!expected.out.isRevealed() && next.isRevealed()) {
        expected.style = expected.isWide ? RevealStyle::inline_ : styleNow(check);
    }
    if (std::exchange(expected.hasNoRoom, false)) {
        check.require(next.isRevealed() && expected.style == RevealStyle::inline_,
                      "only what would come out in the bar needs room there", line.text);
        expected.style = RevealStyle::shelf;
    }
    if (event.starts_with("peek ")) {
        check.require(!check.leavesVelkoAlone(), "the user alone decides", line.text);
        expected.openedAt = line.at;
    }
    expected.out = next;
    expected.isPinned = expected.isPinned && next.isRevealed();
    expected.asked.insert(event);
    line.rearm();
}

void hadNoRoom(LogLine& line) {
    Expected& expected = line.check.expected;
    line.check.require(expected.layout.shelfWhenFull && std::stoll(line.parts[0]) < std::stoll(line.parts[1]),
                       "the shelf takes what has no room, where that is wanted", line.text);
    expected.hasNoRoom = true;
}

void wideBegan(LogLine& line) {
    Expected& expected = line.check.expected;
    line.check.require(!expected.isWide, "nothing is hidden on a wide display, and that is said once");
    expected.isWide = true;
    expected.style = RevealStyle::inline_;
    expected.isPinned = false;
    expected.asked.insert("wide display");
}

void wideEnded(LogLine& line) {
    Expected& expected = line.check.expected;
    line.check.require(expected.isWide, "a wide display is left once");
    expected.isWide = false;
    expected.asked.insert("wide display");
}

void pinned(LogLine& line) {
    Expected& expected = line.check.expected;
    line.check.require(expected.out.isRevealed() && expected.style == RevealStyle::shelf,
                       "only an open shelf is pinned");
    expected.isPinned = line.text == "shelf pinned";
    line.rearm();
}

/// Time also passes while the Mac sleeps, but then the model reads the clock late.
void presentingTimeOver(LogLine& line) {
    const Expected& expected = line.check.expected;
    const std::chrono::minutes lasts(expected.layout.presentingMinutes);
    const bool isOver = line.at - expected.presentedAt >= lasts - 1s ||
                        line.check.date() - expected.presentedSince >= lasts - 1s;
    line.check.require(expected.out.isPresenting && lasts > 0min && isOver,
                       "presenting lasts as long as the user wants", line.text);
    line.check.expected.asked.insert("presenting is over");
}

// Pop-outs, show-me and Live Activities

void poppedOut(LogLine& line) {
    StepCheck& check = line.check;
    Expected& expected = check.expected;
    const BundleID& app = line.parts[0];
    check.require(expected.layout.popOutOnChange && expected.present.contains(app) &&
                      !expected.isWaiting(app) && expected.sectionOf(app) == Section::tucked,
                  "only tucked icons pop out", app);
    const auto last = expected.lastPop.find(app);
    check.require(last == expected.lastPop.end() || line.at - last->second >= popOutRest - 1s,
                  "nothing pops out all the time", app);
    check.require(!expected.layout.neverPopOut.contains(app), "who is to stay in stays in", app);
    const auto quiet = expected.layout.quietUntil.find(app);
    check.require(quiet == expected.layout.quietUntil.end() || quiet->second <= check.date(),
                  "who is to be quiet today is quiet", app);
    expected.pops[app].push_back(line.at);
    expected.popped[app] = line.at + popOut;
    expected.lastPop[app] = line.at;
    expected.awaited.changed.erase(app);
    expected.asked.insert("pop out " + app);
}

void quietened(LogLine& line) {
    StepCheck& check = line.check;
    const BundleID& app = line.parts[0];
    const auto& pops = check.expected.pops[app];
    const auto recent = std::ranges::count_if(pops, [&](auto at) { return line.at - at <= mutingTime; });
    check.require(recent >= mutingPops, "only who pops out all the time is made quiet", app);
    check.expected.pops.erase(app);
    const Date today = Calendar().startOfDay(check.date());
    check.expected.layout.quietUntil[app] = Calendar().addingDays(1, today);
}

void popOutOver(LogLine& line) {
    Expected& expected = line.check.expected;
    const BundleID& app = line.parts[0];
    const auto end = expected.popped.find(app);
    line.check.require(end != expected.popped.end() && isAbout(line.at, end->second),
                       "a pop-out lasts ten seconds", line.text);
    expected.popped.erase(app);
    expected.asked.insert("pop out over " + app);
}

void shownAlone(LogLine& line) {
    Expected& expected = line.check.expected;
    expected.alone = line.parts[0];
    expected.aloneUntil = line.at + showMe;
    expected.asked.insert("show me " + line.parts[0]);
}

void activityBegan(LogLine& line) {
    Expected& expected = line.check.expected;
    line.check.require(!expected.isActivityOn && expected.layout.showLiveActivities,
                       "room is made for a Live Activity once, and where that is wanted");
    expected.isActivityOn = true;
    expected.asked.insert("live activity");
}

void activityEnded(LogLine& line) {
    Expected& expected = line.check.expected;
    line.check.require(expected.isActivityOn, "a Live Activity ends once");
    expected.isActivityOn = false;
    expected.isActivityDismissed = false;
    expected.asked.insert("live activity over");
}

void activityDismissed(LogLine& line) {
    Expected& expected = line.check.expected;
    line.check.require(expected.isActivityOn && !expected.isActivityDismissed && mayToggle(line.check),
                       "a click tidies while a Live Activity is on");
    expected.isActivityDismissed = true;
    expected.out = {};
    expected.isPinned = false;
    expected.asked.insert("live activity dismissed");
}

constexpr auto iconRows = std::to_array<LineRow>({
    {"liveactivity", "iPhone Live Activity running: showing the whole bar", activityBegan},
    {"liveactivity", "Live Activity over: tidying again", activityEnded},
    {"liveactivity", "broom clicked: tidying anyway until this activity ends", activityDismissed},
    {"popout", "* changed: out for 10.0 seconds", poppedOut},
    {"popout", "* changes all the time: quiet until tomorrow", quietened},
    {"popout", "pop out over *", popOutOver},
    {"reveal", "the bar has room for * points, and not for *: out on the shelf", hadNoRoom},
    {"reveal", "the broom is on a wide display: nothing is hidden there", wideBegan},
    {"reveal", "the broom is not on a wide display any more: tidying again", wideEnded},
    {"reveal", "*: * -> *", revealed},
    {"reveal", "shelf pinned", pinned},
    {"reveal", "shelf let go", pinned},
    {"reveal", "not presenting: *", nothingFollows},
    {"reveal", "the time for presenting is over", presentingTimeOver},
    {"showme", "not while presenting: *", nothingFollows, By::user},
    {"showme", "showing *", shownAlone, By::user},
});

}  // namespace

std::span<const LineRow> iconLines() {
    return iconRows;
}

}  // namespace velko::scenarios::model
