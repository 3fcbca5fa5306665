#include "VelkoEngine/Opening/ItemOpener.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/Background/Awaited.h"
#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Processes.h"
#include "VelkoEngine/Ports/Screen.h"
#include "VelkoEngine/Ports/Task.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

namespace {

struct PressResult {
    std::string text;
    bool menuOpens = false;
};

PressResult pressFirstItem(Accessibility& accessibility, ProcessID pid) {
    const auto items = AX::statusItems(accessibility, pid);
    if (items.empty()) {
        return {.text = "item not found"};
    }
    const auto pressed = accessibility.perform(items.front(), "AXPress");
    if (pressed) {
        return {.text = "ok", .menuOpens = true};
    }
    if (pressed.error() == AXError::cannotComplete) {
        // Some apps answer only once their menu has closed again.
        return {.text = "ok (slow app, menu likely open)", .menuOpens = true};
    }
    return {.text = "AX error " + std::to_string(static_cast<std::int32_t>(pressed.error()))};
}

}  // namespace

/// One opening, from the request to its end. It waits, then watches and presses. A callback may end it or
/// destroy the opener, so each step that calls back keeps a reference to it.
class ItemOpener::Opening final : public std::enable_shared_from_this<Opening> {
 public:
    Opening(ItemOpener& opener, Request request)
        : opener_(opener), platform_(opener.platform_), request_(std::move(request)) {}

    void start() {
        const auto self = shared_from_this();
        const auto pids = AX::pids(platform_, request_.bundleID);
        if (pids.empty()) {
            say("app not running");
            tell(Press::notRunning);
            end();
            return;
        }
        wait_ = Awaited::after(platform_, "opening an app", Timing::peekReflowDelay,
                               [this, pid = pids.front()] { watchAndPress(pid); });
    }

    /// Nobody is told of its end any more. An opening that watches ends here; one that still waits goes on.
    void supersede() {
        request_.onClose = nullptr;
        if (!wait_.isPending()) {
            end();
        }
    }

    /// Ends it without a word to anybody.
    void letGo() {
        hasEnded_ = true;
        wait_.cancel();
        observer_.reset();
        activation_.end();
        timeout_.cancel();
    }

 private:
    void say(std::string_view what) const {
        request_.log("open " + request_.bundleID + ": " + std::string(what));
    }

    void tell(Press press) {
        if (const auto onPress = std::exchange(request_.onPress, nullptr)) {
            onPress(press);
        }
    }

    void watchAndPress(ProcessID pid) {
        const auto self = shared_from_this();
        Accessibility& accessibility = platform_.accessibility;
        observer_ = accessibility.observe(pid, Timing::axMessagingTimeout,
                                          [this](const std::string&, const AXElement&) { end(); });
        if (observer_) {
            // Without this notification the time-out or another app's activation ends the opening.
            static_cast<void>(observer_->add(AX::application(accessibility, pid), "AXMenuClosed"));
        }
        activation_ =
            platform_.workspace.observe([this, pid](const WorkspaceNotice& notice) { hear(notice, pid); });
        timeout_ = Awaited::after(platform_, "opening an app", Timing::peekMaxDuration, [this] { giveUp(); });
        const PressResult result = pressFirstItem(accessibility, pid);
        say("press " + result.text);
        tell(result.menuOpens ? Press::menuOpens : Press::unanswered);
        if (!result.menuOpens) {
            end();
        }
    }

    void hear(const WorkspaceNotice& notice, ProcessID target) {
        if (notice.kind != WorkspaceNotice::Kind::activated || !notice.pid || notice.pid == target ||
            notice.pid == platform_.processes.ownPID()) {
            return;
        }
        const auto self = shared_from_this();
        request_.log("another app became active (" + notice.bundleID.value_or("?") + "), ending open");
        end();
    }

    void giveUp() {
        const auto self = shared_from_this();
        say("no menu-closed notification, ending");
        end();
    }

    /// The callback comes last: it may begin another opening, or destroy the opener.
    void end() {
        if (hasEnded_) {
            return;
        }
        const auto self = shared_from_this();
        letGo();
        std::erase(opener_.openings_, self);
        if (const auto onClose = std::exchange(request_.onClose, nullptr)) {
            onClose();
        }
    }

    ItemOpener& opener_;  ///< outlives every opening that has not ended
    Platform platform_;
    Request request_;
    bool hasEnded_ = false;
    Task wait_;
    std::unique_ptr<AXObserver> observer_;
    Subscription activation_;
    Task timeout_;
};

ItemOpener::ItemOpener(const Platform& platform) : platform_(platform) {}

ItemOpener::~ItemOpener() {
    // An opening that is in a callback right now lives longer than the opener, but does nothing more.
    for (const auto& opening : openings_) {
        opening->letGo();
    }
}

void ItemOpener::open(Request request) {
    cancel();
    const auto opening = std::make_shared<Opening>(*this, std::move(request));
    openings_.push_back(opening);
    current_ = opening;
    opening->start();
}

void ItemOpener::cancel() {
    if (const auto opening = std::exchange(current_, {}).lock()) {
        opening->supersede();
    }
}

bool isAnyMenuOpen(const Platform& platform) {
    const auto windows = platform.windows.onScreen();
    if (!windows) {
        return false;
    }
    const auto menuLevel = platform.windows.popUpMenuLevel();
    const ProcessID ownPID = platform.processes.ownPID();
    return std::ranges::any_of(*windows, [&](const WindowInfo& window) {
        return window.layer == menuLevel && window.ownerPID != ownPID;
    });
}

}  // namespace velko
