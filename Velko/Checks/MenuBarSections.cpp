#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "Velko/Checks/Subject.h"
#include "VelkoCore/NumberText.h"
#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/MenuBar/Inventory.h"
#include "VelkoEngine/MenuBar/MenuBarStrip.h"
#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Pointer.h"
#include "VelkoEngine/Ports/Processes.h"
#include "VelkoEngine/Ports/Screen.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko::SelfCheck {

bool isSurelyTrusted(const Platform& platform) {
    return AX::isTrusted(platform) &&
           TrustEvidence::ask(platform, TrustEvidence::witnesses(platform)) == true;
}

bool waitUntil(const Subject& subject, MainThread::Uptime atMost, const std::function<bool()>& holds) {
    constexpr std::chrono::milliseconds turn{100};
    const MainThread& thread = subject.platform.mainThread;
    const auto end = thread.now() + atMost;
    while (!holds()) {
        if (thread.now() >= end) {
            return false;
        }
        subject.pass(turn);
    }
    return true;
}

std::string nameOf(AXError error) {
    switch (error) {
        case AXError::failure: return "failure";
        case AXError::illegalArgument: return "illegalArgument";
        case AXError::invalidElement: return "invalidElement";
        case AXError::cannotComplete: return "cannotComplete";
        case AXError::attributeUnsupported: return "attributeUnsupported";
        case AXError::actionUnsupported: return "actionUnsupported";
        case AXError::notImplemented: return "notImplemented";
        case AXError::notificationAlreadyRegistered: return "notificationAlreadyRegistered";
        case AXError::apiDisabled: return "apiDisabled";
        case AXError::noValue: return "noValue";
    }
    return "error " + std::to_string(static_cast<int>(error));
}

std::string milliseconds(MainThread::Uptime time) {
    const auto tenths = std::chrono::round<std::chrono::duration<std::int64_t, std::ratio<1, 10'000>>>(time);
    return std::to_string(tenths.count() / 10) + "." + std::to_string(tenths.count() % 10) + " ms";
}

std::string placeOf(const Rect& frame) {
    return wholeText(frame.x) + "," + wholeText(frame.y) + " " + wholeText(frame.width) + "x" +
           wholeText(frame.height);
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        text += text.empty() ? "" : ", ";
        text += word;
    }
    return text;
}

std::string namesOf(const Platform& platform, const std::set<ProcessID>& pids) {
    std::vector<std::string> names;
    std::ranges::transform(pids, std::back_inserter(names),
                           [&](ProcessID pid) { return nameOf(platform, pid); });
    return joined(names);
}

std::string nameOf(const Platform& platform, ProcessID pid) {
    if (auto bundleID = platform.workspace.bundleID(pid)) {
        return *std::move(bundleID);
    }
    return platform.processes.name(pid).value_or("process " + std::to_string(pid));
}

void checkPermission(const Subject& subject, Notes& notes) {
    const Platform& platform = subject.platform;
    const bool isSaid = AX::isTrusted(platform);
    notes.tell("the system says that the permission is", isSaid ? "given" : "not given");

    const auto witnesses = TrustEvidence::witnesses(platform);
    for (const ProcessID pid : witnesses) {
        const auto start = platform.mainThread.now();
        const auto role =
            platform.accessibility.attribute(AX::application(platform.accessibility, pid), "AXRole");
        notes.tell("a read of " + nameOf(platform, pid), (role ? "an answer" : nameOf(role.error())) +
                                                             " in " +
                                                             milliseconds(platform.mainThread.now() - start));
    }
    const auto proof = TrustEvidence::ask(platform, witnesses);
    if (proof) {
        notes.expect("the system and other apps agree about the permission", *proof == isSaid,
                     *proof ? "other apps let themselves be read" : "other apps refuse");
    } else {
        notes.tell("other apps", "none of those asked has answered");
    }

    if (!isSaid || proof != true) {
        notes.tell("a click tap", "not tried: without the permission the system would ask for another one");
        return;
    }
    const auto tap = platform.pointer.tapClicks([](const ClickTapEvent&) {});
    notes.expect("a click tap is installed and switched on", tap && tap->isEnabled(),
                 tap ? (tap->isEnabled() ? "" : "switched off") : "refused");
}

namespace {

/// What one app has answered about its icons.
struct AppAnswer {
    std::vector<Rect> icons;
    std::vector<AXError> errors;  ///< those that are no ordinary answers
    MainThread::Uptime time{};
};

AppAnswer askApp(const Platform& platform, ProcessID pid) {
    const Accessibility& accessibility = platform.accessibility;
    AppAnswer result;
    const auto start = platform.mainThread.now();
    const auto noteError = [&](const AXAnswer& answer) {
        if (!AX::isHeard(answer)) {
            result.errors.push_back(answer.error());
        }
    };
    const auto bar = accessibility.attribute(AX::application(accessibility, pid), "AXExtrasMenuBar");
    noteError(bar);
    const auto* const element = bar ? std::get_if<AXElement>(&*bar) : nullptr;
    if (element != nullptr) {
        const auto children = accessibility.attribute(*element, "AXChildren");
        noteError(children);
        const auto* const list = children ? std::get_if<std::vector<AXElement>>(&*children) : nullptr;
        for (const AXElement& icon : list != nullptr ? *list : std::vector<AXElement>{}) {
            const auto position = accessibility.attribute(icon, "AXPosition");
            const auto size = accessibility.attribute(icon, "AXSize");
            noteError(position);
            noteError(size);
            if (const auto frame = AX::frame(position, size)) {
                result.icons.push_back(*frame);
            }
        }
    }
    result.time = platform.mainThread.now() - start;
    return result;
}

struct AskedApp {
    Inventory::AppRef app;
    AppAnswer first;
    AppAnswer second;
};

/// Asks every app twice, all of them once and then all of them again.
std::vector<AskedApp> askApps(const Platform& platform, Notes& notes) {
    std::vector<AskedApp> asked;
    const auto start = platform.mainThread.now();
    for (Inventory::AppRef& app : Inventory::runningApps(platform)) {
        AppAnswer answer = askApp(platform, app.pid);
        asked.push_back({.app = std::move(app), .first = std::move(answer), .second = {}});
    }
    const auto half = platform.mainThread.now();
    for (AskedApp& each : asked) {
        each.second = askApp(platform, each.app.pid);
    }
    notes.tell("all apps, one after another", std::to_string(asked.size()) + " apps in " +
                                                  milliseconds(half - start) + ", then in " +
                                                  milliseconds(platform.mainThread.now() - half));
    return asked;
}

void tellIcons(const std::vector<AskedApp>& asked, Notes& notes) {
    for (const auto& [app, first, second] : asked) {
        if (first.icons.empty() && second.icons.empty()) {
            continue;
        }
        std::string seen;
        for (const Rect& icon : first.icons) {
            seen += placeOf(icon) + ", ";
        }
        seen += milliseconds(first.time) + ", then " + milliseconds(second.time);
        if (first.icons != second.icons) {
            seen += ", other icons the second time: " + std::to_string(second.icons.size());
        }
        notes.tell(app.bundleID + ", " + std::to_string(first.icons.size()) + " icons", seen);
    }
    std::map<std::string, std::vector<std::string>> whoByError;
    for (const auto& [app, first, second] : asked) {
        for (const AXError error : first.errors) {
            whoByError[nameOf(error)].push_back(app.bundleID);
        }
        for (const AXError error : second.errors) {
            whoByError[nameOf(error) + " the second time"].push_back(app.bundleID);
        }
    }
    for (const auto& [error, apps] : whoByError) {
        notes.tell(error, joined(apps));
    }
}

/// Who answers a hit test in the middle of an app's icon.
void hitIcon(const Platform& platform, const AskedApp& owner, const Rect& icon, Notes& notes) {
    const auto found = platform.accessibility.elementAt(
        {.x = icon.x + icon.width / 2, .y = icon.y + icon.height / 2}, std::chrono::milliseconds(500));
    const auto pid = found ? platform.accessibility.pid(*found) : std::unexpected(found.error());
    const bool isOwner = pid == std::expected<ProcessID, AXError>(owner.app.pid);
    const bool isHost = pid && AX::menuBarHostPID(platform) == *pid;
    notes.expect("a hit on the icon of " + owner.app.bundleID + " finds the app or the menu bar's host",
                 isOwner || isHost,
                 isOwner  ? "the app"
                 : isHost ? "the host"
                 : pid    ? nameOf(platform, *pid)
                          : nameOf(pid.error()));
}

void hitIcons(const Platform& platform, const std::vector<AskedApp>& asked, Notes& notes) {
    const auto displays = platform.displays.displays();
    const double thickness = platform.displays.statusBarThickness();
    std::size_t left = 3;
    for (const AskedApp& each : asked) {
        const auto shown = std::ranges::find_if(each.second.icons, [&](const Rect& icon) {
            return MenuBarStrip::shows(displays, thickness, icon);
        });
        if (left > 0 && shown != each.second.icons.end()) {
            hitIcon(platform, each, *shown, notes);
            --left;
        }
    }
}

/// Which levels above ordinary windows are in use, and by whom.
void tellWindows(const Platform& platform, Notes& notes) {
    std::map<std::pair<std::int64_t, ProcessID>, std::size_t> counts;
    for (const WindowInfo& window : platform.windows.onScreen().value_or(std::vector<WindowInfo>{})) {
        const std::int64_t layer = window.layer.value_or(0);
        if (layer > 0) {
            ++counts[{layer, window.ownerPID.value_or(0)}];
        }
    }
    for (const auto& [key, count] : counts) {
        notes.tell("windows at level " + std::to_string(key.first),
                   std::to_string(count) + " of " + nameOf(platform, key.second));
    }
}

}  // namespace

void checkMenuBar(const Subject& subject, Notes& notes) {
    const Platform& platform = subject.platform;
    tellWindows(platform, notes);
    if (!isSurelyTrusted(platform)) {
        notes.tell("icons", "not read: there is no permission");
        return;
    }
    const auto asked = askApps(platform, notes);
    tellIcons(asked, notes);
    hitIcons(platform, asked, notes);

    // The app's own way of reading, which asks several apps at a time.
    std::optional<Inventory::Found> found;
    const auto start = platform.mainThread.now();
    const Task reading =
        Inventory::items(platform, {}, [&](Inventory::Found result) { found = std::move(result); });
    static_cast<void>(waitUntil(subject, std::chrono::seconds(20), [&] { return found.has_value(); }));
    notes.expect("the menu bar's items are read", found && found->isHeard,
                 std::to_string(found ? found->items.size() : 0) + " items in " +
                     milliseconds(platform.mainThread.now() - start));
    const auto owners = Inventory::visiblePIDs(platform);
    notes.expect("the menu bar's host tells whose icons show", !owners.empty(), namesOf(platform, owners));
}

}  // namespace velko::SelfCheck
