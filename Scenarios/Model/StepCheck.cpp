#include "Scenarios/Model/StepCheck.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Scenarios/SampleApps.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "Velko/App/AppController.h"
#include "VelkoCore/Layout/Switches.h"

namespace velko::scenarios::model {

namespace {

using script::Step;
using script::Verb;
using namespace std::chrono_literals;

constexpr auto toldTwice = 50ms;   ///< a click so soon after another is the same click, reported twice
constexpr auto sameClick = 400ms;  ///< a click so soon after something was closed is the click that closed it

BundleID appIn(const Step& step) {
    return bundleIDOf(step.app).value_or(step.app);
}

bool isRecent(const std::optional<StepCheck::Uptime>& moment, StepCheck::Uptime now) {
    return moment && now - *moment < sameClick;
}

/// "keep:com.example.app" is about an app.
std::pair<std::string, BundleID> partsOf(const std::string& control) {
    const auto colon = control.find(':');
    return colon == std::string::npos ? std::pair(control, BundleID())
                                      : std::pair(control.substr(0, colon), control.substr(colon + 1));
}

std::string spoken(const std::string& word) {
    return word == "on" ? "true" : word == "off" ? "false" : word;
}

/// A log line that the step must write: its category and its first words. Nothing if the step need not write
/// one.
using Promise = std::optional<std::pair<std::string, std::string>>;

Promise promiseOfNote(const std::string& what, const BundleID& app) {
    if (what == "keep" || what == "tuck" || what == "bury") {
        const std::string section = what == "keep" ? "bar" : what == "tuck" ? "tucked" : "buried";
        return {{"layout", app + " -> " + section + " (new icon answered)"}};
    }
    if (what == "later" || what == "always") {
        return {{"autopilot", (what == "later" ? "not now: " : "always keep: ") + app}};
    }
    if (what == "keep-all" || what == "tuck-all") {
        return {{"layout", ""}};
    }
    return std::nullopt;
}

Promise promiseOfSwitch(const SwitchRow& row, const std::string& value) {
    return {
        {"settings", row.words.empty() ? "reveal settings " : std::string(row.words) + ' ' + spoken(value)}};
}

Promise promiseOfSettings(const std::string& what, const BundleID& app, const std::string& value) {
    if (what == "section") {
        return {{"layout", app + " -> " +
                               std::string(value == "Bar"      ? "bar"
                                           : value == "Tucked" ? "tucked"
                                                               : "buried")}};
    }
    if (const SwitchRow* const row = Switches::named(what)) {
        return promiseOfSwitch(*row, value);
    }
    if (what == "later" || what == "ask-again") {
        return {{"autopilot", (what == "later" ? "not now: " : "asks again: ") + app}};
    }
    const bool isReveal = what == "auto-tuck" || what.starts_with("style-");
    return isReveal ? Promise({"settings", "reveal settings "}) : std::nullopt;
}

Promise promiseOfPress(const Step& step) {
    const auto [what, app] = partsOf(step.control);
    if (step.word == "note") {
        return promiseOfNote(what, app);
    }
    return step.word == "settings" ? promiseOfSettings(what, app, step.value.value_or("")) : std::nullopt;
}

Promise promiseOf(const Step& step, bool isPresenting) {
    const BundleID app = appIn(step);
    switch (step.verb) {
        case Verb::place: return {{"layout", app + " -> " + step.word}};
        case Verb::showMe: return {{"showme", (isPresenting ? "not while presenting: " : "showing ") + app}};
        case Verb::dismiss: return {{"autopilot", "not now: " + app}};
        case Verb::showChanges:
            return {{"settings", "show when it changes " + app + " " + spoken(step.word)}};
        case Verb::showToAudience:
            return {{"settings", "stays while presenting " + app + " " + spoken(step.word)}};
        case Verb::alwaysKeep: return {{"autopilot", "always keep: " + app}};
        case Verb::finishSetup: return {{"setup", "sorted: 0 in the bar, 0 tucked, 0 buried"}};
        case Verb::setSwitch: {
            const SwitchRow* const row = Switches::named(step.control);
            return row == nullptr ? std::nullopt : promiseOfSwitch(*row, step.word);
        }
        case Verb::setShowAllFrom: return {{"settings", "show everything on displays from "}};
        case Verb::setNewIcons: return {{"settings", "new icons go to " + step.word}};
        case Verb::setAutoTuck:
        case Verb::setNotchedStyle:
        case Verb::setOtherStyle: return {{"settings", "reveal settings "}};
        case Verb::setLogin: return {{"settings", "launch at login "}};
        case Verb::velkoStart: return std::nullopt;
        case Verb::setKey: return {{"keys", step.word + ": "}};
        case Verb::press: return promiseOfPress(step);
        default: return std::nullopt;
    }
}

bool wasLogged(const std::vector<Happening>& happened, const std::string& category,
               const std::string& beginning) {
    return std::ranges::any_of(happened, [&](const Happening& each) {
        return each.category == category && each.text.starts_with(beginning);
    });
}

constexpr std::array menuEitherWay{ClickMeaning::menu, ClickMeaning::menu};

/// Whether a click on the broom is another one told twice. Remembers it, unless it only closes the menu.
bool isToldTwice(StepCheck& check) {
    if (check.expected.isMenuOpen) {
        return false;
    }
    const auto before = std::exchange(check.expected.broomClickedAt, check.now());
    return before && check.now() - *before < toldTwice;
}

/// Checks a left click on the broom. It may have written no line.
void checkQuietClick(StepCheck& check, const std::vector<Happening>& happened) {
    if (check.hasJustTucked()) {
        return;
    }
    const bool isTold = wasLogged(happened, "reveal", "toggle") || wasLogged(happened, "note", "shown") ||
                        wasLogged(happened, "liveactivity", "broom clicked");
    const bool isMenuOpen = check.world.mac().statusItem.menu() != nullptr;
    if (isTold) {
        check.require(!isMenuOpen, "a click does one thing");
        return;
    }
    // The lines of the step may have been written before the click or after it.
    const std::array meanings{check.meaningAtFirst, meaningOfClick(check)};
    const auto mayMean = [&](ClickMeaning meaning) { return std::ranges::count(meanings, meaning) > 0; };
    check.require(isMenuOpen ? mayMean(ClickMeaning::menu) : meanings != menuEitherWay,
                  "the menu opens where there is nothing to bring out");
    check.require(mayMean(ClickMeaning::menu) || mayMean(ClickMeaning::nothing),
                  "a click on the broom is heard");
}

void endShowMe(StepCheck& check) {
    Expected& expected = check.expected;
    if (expected.alone) {
        expected.alone.reset();
        expected.asked.insert("show me stopped");
    }
}

/// Checks a command that brings icons out or tucks them away.
void checkCommand(StepCheck& check) {
    const Expected& expected = check.expected;
    const std::string command = check.step.text.value_or("");
    const bool stepsAside = expected.isActivityOn && !expected.isActivityDismissed;
    if (!expected.isWell() || expected.isRefused || stepsAside || expected.out.isPresenting) {
        return;
    }
    if (command.starts_with("show")) {
        check.require(expected.out.isRevealed() || expected.isWide, "a command brings icons out", command);
    } else if (command == "tuck") {
        check.require(expected.out == Out(), "a command tucks icons away", expected.out.text());
    }
}

}  // namespace

std::map<BundleID, AppUsage> StepCheck::usage() const {
    const AppController* velko = world.velko();
    return velko == nullptr ? std::map<BundleID, AppUsage>() : velko->values().usage;
}

bool isBroomClick(const script::Step& step) {
    return (step.verb == Verb::clickBroom && step.word != "lost") || step.verb == Verb::holdBroom ||
           step.verb == Verb::voiceOverPressBroom;
}

bool isCommand(const script::Step& step) {
    return step.verb == Verb::command || step.verb == Verb::openAddress || step.verb == Verb::answer;
}

bool isPressOnBroom(const script::Step& step) {
    return isBroomClick(step) || step.verb == Verb::rightClickBroom || step.verb == Verb::controlClickBroom;
}

ClickMeaning meaningOfClick(const StepCheck& check) {
    const Expected& expected = check.expected;
    if (expected.isMenuOpen) {
        return ClickMeaning::nothing;
    }
    const bool canShowMore = !expected.out.isPresenting && expected.isAnyHideable();
    if (!expected.isWell() || (!expected.out.isRevealed() && !canShowMore)) {
        return ClickMeaning::menu;
    }
    const bool isOwnClosing =
        isRecent(expected.shelfClickedAt, check.now()) || isRecent(expected.noteClosedAt, check.now());
    if (isOwnClosing || expected.alone) {
        return ClickMeaning::nothing;
    }
    const bool asks =
        !check.step.flag && !expected.out.isRevealed() && !expected.isPutOff && check.asksSomething();
    if (asks) {
        return expected.out.opened.empty() ? ClickMeaning::opensNote : ClickMeaning::nothing;
    }
    if (expected.isWide && !expected.out.isRevealed()) {
        return ClickMeaning::menu;  // nothing is hidden
    }
    return ClickMeaning::toggles;
}

void checkStep(StepCheck& check, const std::vector<Happening>& happened) {
    if (check.world.velko() == nullptr) {
        return;
    }
    if (const auto promise = promiseOf(check.step, check.expected.out.isPresenting)) {
        const bool isManaged = !check.expected.managed.isEmpty() && wasLogged(happened, "managed", "stays ");
        check.require(isManaged || wasLogged(happened, promise->first, promise->second),
                      "the log says what the user did", "[" + promise->first + "] " + promise->second);
    }
    const bool isRepeated = isPressOnBroom(check.step) && isToldTwice(check);
    if (!isBroomClick(check.step) && check.step.verb == Verb::clickBroom) {
        return;
    }
    switch (check.step.verb) {
        case Verb::clickBroom:
        case Verb::holdBroom:
        case Verb::voiceOverPressBroom:
            if (isRepeated) {
                break;
            }
            checkQuietClick(check, happened);
            // With nothing to show, the click opens the menu instead.
            if (!check.expected.isMenuOpen && check.expected.isWell() &&
                check.world.mac().statusItem.menu() == nullptr) {
                // Whether the press has closed the shelf, or its time was over just then, can't be made out.
                const bool isUnclear = check.hasJustTucked() && !check.world.velko()->values().showingMe;
                if (isUnclear || !isRecent(check.expected.shelfClickedAt, check.now())) {
                    endShowMe(check);
                }
                check.expected.shelfClickedAt.reset();
            }
            break;
        case Verb::open: endShowMe(check); break;
        case Verb::command: checkCommand(check); [[fallthrough]];
        case Verb::rightClickBroom:
        case Verb::choose:
        case Verb::chooseIn:
        case Verb::press:
        case Verb::openAddress:
            check.expected.isAllShown = check.expected.isAllShown || check.step.text == "Show All" ||
                                        check.step.control == "show-all";
            // Some of these open an app, or stop showing it; so does a right click that passes for a left
            // one.
            if (!check.world.velko()->values().showingMe) {
                endShowMe(check);
            }
            break;
        case Verb::showAll: check.expected.isAllShown = true; break;
        case Verb::pressKeys:
            if (!check.world.velko()->values().showingMe) {
                endShowMe(check);
            }
            check.expected.shelfClickedAt.reset();
            break;
        default: break;
    }
}

}  // namespace velko::scenarios::model
