#include "VelkoEngine/Watching/IconWatch.h"

#include <array>
#include <cstddef>
#include <optional>
#include <utility>

#include "VelkoCore/NumberText.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/Background/Reads.h"
#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/MenuBar/Inventory.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

namespace {

/// Notifications whose title is still to be read. An app may send thousands of them.
constexpr std::size_t mostNotifications = 256;

std::string describe(const Accessibility& accessibility, const AXElement& item) {
    std::string description;
    const auto append = [&](const std::string& piece) {
        description += (description.empty() ? "" : " ") + piece;
    };
    for (const std::string attribute : {"AXTitle", "AXDescription", "AXHelp", "AXValue"}) {
        if (const auto text = AX::attributeText(accessibility, item, attribute); !text.empty()) {
            append(std::string(attribute).append("=\"").append(text).append("\""));
        }
    }
    if (const auto frame = AX::frame(accessibility, item)) {
        append("size=" + wholeText(frame->width) + "x" + wholeText(frame->height));
    }
    return description;
}

std::string describe(const Accessibility& accessibility, const std::vector<AXElement>& items,
                     bool isVisible) {
    std::string text;
    const char* separator = "";
    for (const AXElement& item : items) {
        text += separator + describe(accessibility, item);
        separator = ", ";
    }
    return text + (isVisible ? " [visible]" : " [hidden]");
}

}  // namespace

IconWatch::IconWatch(const Platform& platform, std::function<void(const std::string&)> log)
    : platform_(platform),
      log_(std::move(log)),
      titles_(
          platform.mainThread, mostNotifications,
          [&accessibility = platform.accessibility](const Notification& notification) {
              const auto pid = accessibility.pid(notification.element);
              return Notified{.name = notification.name,
                              .pid = pid ? std::optional(*pid) : std::nullopt,
                              .title = AX::title(accessibility, notification.element)};
          },
          [this](const Notified& notified) { logNotified(notified); }) {}

void IconWatch::start() {
    if (isRunning()) {
        return;
    }
    log_("icon watch started");
    poll_ = platform_.mainThread.every(Timing::iconWatchInterval, [this] { look(); });
    look();
}

void IconWatch::stop() {
    if (!isRunning()) {
        return;
    }
    poll_.cancel();
    reading_.cancel();
    observing_.cancel();
    unobserved_.clear();
    titles_.clear();
    last_.clear();
    log_("icon watch stopped");
}

void IconWatch::look() {
    if (reading_.isPending()) {
        return;  // hung apps may take longer to read than the interval
    }
    reading_ = platform_.mainThread.background(
        [platform = platform_] { return Inventory::visiblePIDs(platform); },
        [this](const std::set<ProcessID>& visiblePIDs) { readApps(visiblePIDs); });
}

void IconWatch::readApps(const std::set<ProcessID>& visiblePIDs) {
    reading_ = gatherReads(
        platform_.mainThread, Inventory::runningApps(platform_),
        [&accessibility = platform_.accessibility, visiblePIDs](const Inventory::AppRef& app) {
            auto items = AX::statusItems(accessibility, app.pid);
            auto text = describe(accessibility, items, visiblePIDs.contains(app.pid));
            return SeenApp{
                .bundleID = app.bundleID, .pid = app.pid, .text = std::move(text), .items = std::move(items)};
        },
        [this](std::vector<SeenApp> seen) { compare(std::move(seen)); });
}

void IconWatch::compare(std::vector<SeenApp> seen) {
    std::map<BundleID, SeenApp> now;
    for (SeenApp& app : seen) {
        if (!app.items.empty()) {
            now.insert_or_assign(app.bundleID, std::move(app));
        }
    }
    const char* const wordForNew = last_.empty() ? "start " : "appeared ";
    std::map<BundleID, Watched> watched;
    for (auto& [bundleID, app] : now) {
        auto known = last_.extract(bundleID);
        if (!known) {
            log_(wordForNew + bundleID + ": " + app.text);
        } else if (known.mapped().text != app.text) {
            log_("CHANGED " + bundleID + ": " + app.text);
        }
        if (known && known.mapped().pid == app.pid) {
            known.mapped().text = std::move(app.text);
            watched.insert(std::move(known));
        } else {
            watched.emplace(
                bundleID,
                Watched{.pid = app.pid, .text = std::move(app.text), .items = std::move(app.items)});
            unobserved_.push_back(bundleID);
        }
    }
    for (const auto& [bundleID, gone] : last_) {
        log_("gone " + bundleID);
    }
    last_ = std::move(watched);
    observeNext();
}

/// Asks one app in each turn of the main thread, because each notification costs a message and the app may
/// answer slowly.
void IconWatch::observeNext() {
    if (unobserved_.empty() || observing_.isPending()) {
        return;
    }
    observing_ = platform_.mainThread.after({}, [this] {
        const BundleID next = std::move(unobserved_.front());
        unobserved_.pop_front();
        observe(next);
        observeNext();
    });
}

void IconWatch::observe(const BundleID& bundleID) {
    const auto found = last_.find(bundleID);
    if (found == last_.end() || found->second.observer) {
        return;
    }
    Watched& app = found->second;
    auto observer = platform_.accessibility.observe(
        app.pid, Timing::axMessagingTimeout, [this](const std::string& name, const AXElement& element) {
            titles_.add({.name = name, .element = element});
        });
    if (observer && registerItems(*observer, app.items)) {
        app.observer = std::move(observer);
    } else {
        log_("no notifications of " + bundleID + ": it does not answer in time");
    }
}

/// False as soon as the app answers one question too late, because it would answer all of them late.
bool IconWatch::registerItems(AXObserver& observer, const std::vector<AXElement>& items) const {
    static constexpr std::array notifications{"AXTitleChanged", "AXValueChanged",       "AXResized",
                                              "AXCreated",      "AXUIElementDestroyed", "AXLayoutChanged"};
    for (const AXElement& item : items) {
        for (const char* const notification : notifications) {
            // An item that does not send one of them is still read at every look.
            const auto added = observer.add(item, notification);
            if (!added && added.error() == AXError::cannotComplete) {
                return false;
            }
        }
    }
    return true;
}

void IconWatch::logNotified(const Notified& notified) const {
    const auto bundleID = notified.pid ? platform_.workspace.bundleID(*notified.pid) : std::nullopt;
    log_("NOTIFIED " + notified.name + ": " + bundleID.value_or("?") + " \"" + notified.title + "\"");
}

}  // namespace velko
