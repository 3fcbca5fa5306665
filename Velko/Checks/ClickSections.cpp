#include <algorithm>
#include <chrono>
#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Velko/Broom/BroomClicks.h"
#include "Velko/Checks/Subject.h"
#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/MenuBar/Inventory.h"
#include "VelkoEngine/MenuBar/MenuBarStrip.h"
#include "VelkoEngine/Opening/ItemOpener.h"
#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/Pointer.h"
#include "VelkoEngine/Ports/Processes.h"
#include "VelkoEngine/Ports/Screen.h"

namespace velko::SelfCheck {

namespace {

using namespace std::chrono_literals;

constexpr auto placing = 2s;  ///< how long the system may need to place a new icon
constexpr auto patience = 20s;
constexpr StatusItem::Symbol checkSymbol() {
    return {.name = "questionmark.circle", .description = "Velko's check"};
}

/// An icon of Velko's in the menu bar, as long as this lives.
class IconForCheck final : private NonCopyable {
 public:
    IconForCheck(const Subject& subject, std::function<void(StatusItem::Click)> clicked)
        : bench_(*subject.bench) {
        // Under a name of its own: the broom keeps its place in the menu bar.
        bench_.statusItem().install("VelkoCheck", "Velko's check", std::move(clicked));
        bench_.statusItem().setImage(checkSymbol());
        subject.pass(placing);
    }
    ~IconForCheck() { bench_.removeStatusItem(); }

 private:
    Bench& bench_;
};

bool lacksBench(const Subject& subject, Notes& notes) {
    if (subject.bench == nullptr) {
        notes.tell("the icon", "there is none here");
    }
    return subject.bench == nullptr;
}

std::string keysOf(bool option, bool control) {
    std::string keys = option ? "Option" : "";
    keys += option && control ? " and " : "";
    keys += control ? "Control" : "";
    return keys.empty() ? "no key" : keys;
}

std::string wordsFor(const BroomClick& click) {
    return std::string(click.isRight ? "right" : "left") + " with " + keysOf(click.option, click.control);
}

std::string wordsFor(const StatusItem::Event& event) {
    using Type = StatusItem::Event::Type;
    const std::map<Type, const char*> types{{Type::leftMouse, "left mouse"},
                                            {Type::rightMouse, "right mouse"},
                                            {Type::systemDefined, "system-defined"},
                                            {Type::other, "another type"}};
    return std::string(types.at(event.type)) + ", subtype " + std::to_string(event.subtype) + ", data " +
           std::to_string(event.data) + ", " + milliseconds(event.age) + " old, " +
           keysOf(event.option, event.control);
}

std::string wordsFor(const StatusItem::Click& click) {
    return "event: " + (click.event ? wordsFor(*click.event) : "none") + "; buttons down " +
           std::to_string(click.pressedButtons) + ", now " + keysOf(click.option, click.control) +
           (click.isVoiceOverOn ? ", VoiceOver is on" : "");
}

/// What a person is asked to do, and how Velko must understand it.
struct Request {
    std::string_view words;
    BroomClick wanted;
};

constexpr auto requests = std::to_array<Request>({
    {"Click on it.", {}},
    {"Hold the Option key, and click on it.", {.option = true}},
    {"Hold the Control key, and click on it.", {.control = true}},
    {"Click on it with the right button, or with two fingers.", {.isRight = true}},
    {"Press the left button on it, hold it for two seconds, and let go.", {}},
});

/// Listens to one icon, and keeps what is told since the last request.
class ClickTrial final : private NonCopyable {
 public:
    ClickTrial(const Subject& subject, Notes& notes)
        : subject_(subject),
          notes_(notes),
          clicks_(
              subject.platform, subject.bench->statusItem(), [this](Point point) { return holds(point); },
              [this](const BroomClick& click) { understood_.push_back(click); }),
          icon_(subject, [this](const StatusItem::Click& click) {
              told_.push_back("the action, " + age() + ": " + wordsFor(click));
              clicks_.acted(click);
          }) {
        frame_ = Inventory::ownItemFrame(subject.platform);
        if (isSurelyTrusted(subject.platform)) {
            tap_ = subject.platform.pointer.tapClicks([this](const ClickTapEvent& event) { heard(event); });
        }
        notes.tell("a click tap", tap_ ? "listens too" : "does not listen");
    }

    void ask(const Request& request) {
        told_.clear();
        understood_.clear();
        askedAt_ = subject_.platform.mainThread.now();
        notes_.say(">> " + std::string(request.words));
        if (!waitUntil(subject_, patience, [&] { return !understood_.empty(); }) && told_.empty()) {
            notes_.tell(std::string(request.words), "nothing came in twenty seconds");
            return;
        }
        subject_.pass(1s);  // what is told late, or twice
        for (const std::string& fact : told_) {
            notes_.tell(std::string(request.words), fact);
        }
        notes_.expect("it was understood", understood_ == std::vector{request.wanted}, words());
    }

 private:
    void heard(const ClickTapEvent& event) {
        if (event.kind == ClickTapEvent::Kind::disabled) {
            told_.emplace_back("the tap was switched off");
            return;
        }
        frame_ = Inventory::ownItemFrame(subject_.platform);
        told_.push_back(std::string("the tap, ") + age() + ": " + (event.isRight ? "right" : "left") +
                        " button down " + (holds(event.location) ? "on the icon" : "elsewhere"));
        clicks_.pressed(event);
    }

    [[nodiscard]] bool holds(Point point) const {
        return frame_ && point.x >= frame_->x && point.x < frame_->maxX() && point.y < frame_->maxY();
    }
    [[nodiscard]] std::string age() const {
        return milliseconds(subject_.platform.mainThread.now() - askedAt_) + " later";
    }
    [[nodiscard]] std::string words() const {
        std::string text;
        for (const BroomClick& click : understood_) {
            text += (text.empty() ? "" : ", and then ") + wordsFor(click);
        }
        return text.empty() ? "as no click" : text;
    }

    const Subject& subject_;
    Notes& notes_;
    std::optional<Rect> frame_;
    MainThread::Uptime askedAt_{};
    std::vector<std::string> told_;
    std::vector<BroomClick> understood_;
    BroomClicks clicks_;
    IconForCheck icon_;
    std::unique_ptr<ClickTap> tap_;
};

/// The windows above ordinary ones, as lines, with how many there are of each.
std::map<std::string, std::size_t> raisedWindows(const Platform& platform) {
    std::map<std::string, std::size_t> counts;
    for (const WindowInfo& window : platform.windows.onScreen().value_or(std::vector<WindowInfo>{})) {
        if (const auto layer = window.layer.value_or(0); layer > 0) {
            ++counts["level " + std::to_string(layer) + ", of " +
                     nameOf(platform, window.ownerPID.value_or(0)) + ", at " +
                     (window.frame ? placeOf(*window.frame) : "no place")];
        }
    }
    return counts;
}

void tellNewWindows(const Platform& platform, const std::map<std::string, std::size_t>& before,
                    const std::string& name, Notes& notes) {
    for (const auto& [line, count] : raisedWindows(platform)) {
        const auto known = before.find(line);
        if (known == before.end() || known->second < count) {
            notes.tell(name, line);
        }
    }
}

void askForAnotherMenu(const Subject& subject, Notes& notes) {
    const Platform& platform = subject.platform;
    const auto before = raisedWindows(platform);
    notes.say(">> Click on the icon of any other app, so that its menu opens, and wait for five seconds.");
    const bool isSeen = waitUntil(subject, patience, [&] {
        return isAnyMenuOpen(platform) || raisedWindows(platform).size() > before.size();
    });
    if (!isSeen) {
        notes.tell("the menu of another app", "none came in twenty seconds");
        return;
    }
    subject.pass(1s);
    tellNewWindows(platform, before, "a window of that menu", notes);
    notes.expect("Velko notices the menu of another app", isAnyMenuOpen(platform));
}

}  // namespace

void askForClicks(const Subject& subject, Notes& notes) {
    if (lacksBench(subject, notes)) {
        return;
    }
    notes.say(
        ">> There is a new icon in the menu bar now: a question mark in a circle. You have twenty "
        "seconds for each of six requests.");
    {
        ClickTrial trial(subject, notes);
        for (const Request& request : requests) {
            trial.ask(request);
        }
    }
    askForAnotherMenu(subject, notes);
}

namespace {

/// Where the icon is, as Accessibility and its own window say, and who answers a hit on it.
void checkPlace(const Subject& subject, Notes& notes) {
    const Platform& platform = subject.platform;
    const auto frame = Inventory::ownItemFrame(platform);
    const auto displays = platform.displays.displays();
    auto window = subject.bench->statusItemWindow();
    if (window && !displays.empty()) {
        window->y = displays.front().frame.maxY() - window->maxY();
    }
    notes.tell("the icon's frame by Accessibility", frame ? placeOf(*frame) : "none");
    notes.tell("the frame of the icon's window", window ? placeOf(*window) : "none");
    if (!frame) {
        return;
    }
    notes.expect("the icon is where a person can see it",
                 MenuBarStrip::shows(displays, platform.displays.statusBarThickness(), *frame));
    const auto found = platform.accessibility.elementAt(
        {.x = frame->x + frame->width / 2, .y = frame->y + frame->height / 2}, 500ms);
    const auto pid = found ? platform.accessibility.pid(*found) : std::unexpected(found.error());
    notes.tell("a hit on the icon finds", pid ? nameOf(platform, *pid) : nameOf(pid.error()));
}

/// Whether timers come while a menu of ours is open, and how its windows look to others.
void checkMenu(const Subject& subject, Notes& notes) {
    const Platform& platform = subject.platform;
    constexpr auto open = 3s;
    constexpr auto beat = 100ms;
    const auto before = raisedWindows(platform);
    std::size_t beats = 0;
    bool isClosed = false;
    Bench& bench = *subject.bench;
    const Task beating = platform.mainThread.every(beat, [&] {
        if (bench.statusItem().isMenuOpen() && ++beats == 10) {
            tellNewWindows(platform, before, "a window of Velko's open menu", notes);
        }
    });
    const Task closing = platform.mainThread.after(open, [&] { bench.closeMenu(); });
    bench.statusItem().openMenu({view::MenuItem::notice("This menu closes by itself.")},
                                [&isClosed] { isClosed = true; });
    const bool isDone = waitUntil(subject, 2 * open, [&] { return isClosed; });
    notes.expect("a menu of Velko's opens, and closes again", isDone && beats > 0);
    notes.expect("timers come while a menu is open", beats >= 20, std::to_string(beats) + " of 30");
    if (!isDone) {
        bench.closeMenu();
        subject.pass(1s);
    }
}

}  // namespace

void checkStatusItem(const Subject& subject, Notes& notes) {
    if (lacksBench(subject, notes)) {
        return;
    }
    const IconForCheck icon(subject, [](const StatusItem::Click&) {});
    checkPlace(subject, notes);
    checkMenu(subject, notes);
}

}  // namespace velko::SelfCheck
