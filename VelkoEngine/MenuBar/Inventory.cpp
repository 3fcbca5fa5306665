#include "VelkoEngine/MenuBar/Inventory.h"

#include <algorithm>
#include <cstddef>
#include <expected>
#include <iterator>
#include <optional>
#include <ranges>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "VelkoEngine/Background/Reads.h"
#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/Processes.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko::Inventory {

namespace {

using Items = std::vector<MenuBarItem>;

bool isAppBundle(std::string_view path) {
    while (path.ends_with('/')) {
        path.remove_suffix(1);
    }
    // The name of a folder called only ".app" has no extension.
    constexpr std::string_view extension = ".app";
    return path.size() > extension.size() && path.ends_with(extension) &&
           path[path.size() - extension.size() - 1] != '/';
}

/// What an app says of its items; nothing when it does not answer.
struct Answer {
    ProcessID pid = 0;
    std::optional<Items> items;
};

Answer ask(const Accessibility& accessibility, const AppRef& app) {
    const auto elements = AX::statusItemsIfHeard(accessibility, app.pid);
    if (!elements) {
        return {.pid = app.pid, .items = std::nullopt};
    }
    Items items;
    bool fellSilent = false;
    for (const AXElement& element : *elements) {
        const AXAnswer position = accessibility.attribute(element, "AXPosition");
        const AXAnswer size = position ? accessibility.attribute(element, "AXSize") : position;
        if (const auto frame = AX::frame(position, size)) {
            items.push_back({.bundleID = app.bundleID,
                             .appName = app.name,
                             .pid = app.pid,
                             .title = AX::title(accessibility, element),
                             .frame = *frame});
        } else if (!AX::isHeard(size)) {
            fellSilent = true;
        }
    }
    const bool isHeard = !fellSilent || !items.empty();
    return {.pid = app.pid, .items = isHeard ? std::optional(std::move(items)) : std::nullopt};
}

/// Left to right; equal left edges keep their order.
void sortByLeftEdge(Items& items) {
    std::vector<std::pair<double, std::size_t>> order;
    for (const MenuBarItem& item : items) {
        order.emplace_back(item.frame.x, order.size());
    }
    std::ranges::sort(order);
    Items sorted;
    sorted.reserve(items.size());
    for (const auto& [leftEdge, index] : order) {
        sorted.push_back(std::move(items[index]));
    }
    items = std::move(sorted);
}

bool hasPID(const auto& entries, ProcessID pid) {
    return std::ranges::any_of(entries, [pid](const auto& entry) { return entry.pid == pid; });
}

/// The known items, brought up to date by the apps' answers.
Found foundBy(std::vector<Answer> answers, Items known) {
    const bool isAnyAsked = !answers.empty();
    std::erase_if(answers, [](const Answer& answer) { return !answer.items; });
    std::erase_if(known, [&](const MenuBarItem& item) { return hasPID(answers, item.pid); });
    for (Answer& answer : answers) {
        std::ranges::move(std::move(answer.items).value_or(Items()), std::back_inserter(known));
    }
    sortByLeftEdge(known);
    return {.items = std::move(known), .isHeard = !isAnyAsked || !answers.empty()};
}

/// Asks some of the running apps.
Task askThem(const Platform& platform, std::vector<AppRef> apps, Items known, ItemsHandler then) {
    return gatherReads(
        platform.mainThread, std::move(apps),
        [&accessibility = platform.accessibility](const AppRef& app) { return ask(accessibility, app); },
        [known = std::move(known), then = std::move(then)](std::vector<Answer> answers) mutable {
            then(foundBy(std::move(answers), std::move(known)));
        });
}

void forgetEnded(Items& known, const std::vector<AppRef>& running) {
    std::erase_if(known, [&](const MenuBarItem& item) { return !hasPID(running, item.pid); });
}

}  // namespace

bool mayHaveItems(const RunningApplication& app) {
    return isReal(app.pid) && app.bundlePath && isAppBundle(*app.bundlePath) && app.bundleID;
}

std::vector<AppRef> runningApps(const Platform& platform) {
    const ProcessID ownPID = platform.processes.ownPID();
    std::vector<AppRef> apps;
    for (RunningApplication& app : platform.workspace.runningApplications()) {
        if (app.pid != ownPID && mayHaveItems(app)) {
            BundleID bundleID = std::move(app.bundleID).value_or(BundleID());
            std::string name = std::move(app.localizedName).value_or(bundleID);
            apps.push_back({.pid = app.pid, .bundleID = std::move(bundleID), .name = std::move(name)});
        }
    }
    return apps;
}

Task items(const Platform& platform, Items known, ItemsHandler then) {
    std::vector<AppRef> apps = runningApps(platform);
    forgetEnded(known, apps);
    return askThem(platform, std::move(apps), std::move(known), std::move(then));
}

Task itemsAdding(const Platform& platform, Items known, ItemsHandler then) {
    std::vector<AppRef> apps = runningApps(platform);
    forgetEnded(known, apps);
    std::erase_if(apps, [&](const AppRef& app) { return hasPID(known, app.pid); });
    return askThem(platform, std::move(apps), std::move(known), std::move(then));
}

Task frames(const Platform& platform, const std::set<ProcessID>& pids,
            std::function<void(std::vector<Rect>)> then) {
    using Frames = std::vector<Rect>;
    return gatherReads(
        platform.mainThread, std::vector<ProcessID>(pids.begin(), pids.end()),
        [&accessibility = platform.accessibility](ProcessID pid) {
            Frames frames;
            for (const AXElement& element : AX::statusItems(accessibility, pid)) {
                if (const auto frame = AX::frame(accessibility, element)) {
                    frames.push_back(*frame);
                }
            }
            return frames;
        },
        [then = std::move(then)](const std::vector<Frames>& perProcess) {
            Frames all;
            for (const Frames& frames : perProcess) {
                all.insert(all.end(), frames.begin(), frames.end());
            }
            then(std::move(all));
        });
}

std::optional<Rect> ownItemFrame(const Platform& platform) {
    const auto own = AX::statusItems(platform.accessibility, platform.processes.ownPID());
    return own.empty() ? std::nullopt : AX::frame(platform.accessibility, own.front());
}

namespace {

using Names = std::vector<std::string>;

/// How one item looks, or why it does not say.
std::expected<ItemReading, AXError> readItem(const Accessibility& accessibility, const AXElement& element,
                                             const Names& attributes) {
    // One message for all: this is done for every tucked icon every two seconds.
    const auto answers = AX::attributes(accessibility, element, attributes);
    if (std::ranges::none_of(answers, AX::isHeard)) {
        return std::unexpected(answers.front().error());
    }
    const auto frame = AX::frame(answers[0], answers[1]);
    ItemReading reading{.text = {}, .width = frame ? frame->width : 0};
    // Empty fields stay in the text, and its last field is the value, not the identifier as in a title: the
    // text must change whenever one of the four attributes changes.
    const char* separator = "";
    for (const AXAnswer& answer : answers | std::views::drop(2)) {
        reading.text += separator;
        reading.text += AX::text(answer);
        separator = "|";
    }
    return reading;
}

AppReading readApp(const Accessibility& accessibility, const Watched& app, const Names& attributes) {
    const bool isKnown = !app.elements.empty();
    AppReading reading{.pid = app.pid,
                       .items = {},
                       .elements = isKnown ? app.elements : AX::statusItems(accessibility, app.pid)};
    bool isWhole = true;
    for (const AXElement& element : reading.elements) {
        auto item = readItem(accessibility, element, attributes);
        isWhole = isWhole && item.has_value();
        if (item) {
            reading.items.push_back(*std::move(item));
        } else if (isKnown && item.error() == AXError::invalidElement) {
            return readApp(accessibility, {.pid = app.pid}, attributes);
        }
    }
    if (!isWhole) {
        reading.elements.clear();
    }
    return reading;
}

}  // namespace

Task readings(const Platform& platform, std::map<BundleID, Watched> apps, ReadingsHandler then) {
    using App = std::pair<BundleID, Watched>;
    using Reading = std::pair<BundleID, AppReading>;
    return gatherReads(
        platform.mainThread, std::vector<App>(apps.begin(), apps.end()),
        [&accessibility = platform.accessibility,
         attributes = Names{"AXPosition", "AXSize", "AXTitle", "AXDescription", "AXHelp", "AXValue"}](
            const App& app) { return Reading{app.first, readApp(accessibility, app.second, attributes)}; },
        [then = std::move(then)](std::vector<Reading> perApp) {
            then(Readings(std::make_move_iterator(perApp.begin()), std::make_move_iterator(perApp.end())));
        });
}

namespace {

/// Elements at this depth are still looked at, those below are not: the host's windows can be large.
constexpr int deepestWalk = 4;

/// The owner of the item for which an element of the host's menu-bar window stands; nothing when it stands
/// for none.
std::optional<ProcessID> ownerOfItem(const Accessibility& accessibility, const Walked& walked,
                                     ProcessID hostPID) {
    if (walked.element == nullptr) {
        return walked.pid;
    }
    const auto role = AX::string(accessibility, *walked.element, "AXRole");
    if (role == "AXApplication" || role == "AXMenuBarItem") {
        return walked.pid.value_or(hostPID);
    }
    return role == "AXButton" && walked.pid != hostPID ? walked.pid : std::nullopt;
}

}  // namespace

std::set<ProcessID> visiblePIDs(const Platform& platform) {
    const auto hostPID = AX::menuBarHostPID(platform);
    if (!hostPID) {
        return {};
    }
    const Accessibility& accessibility = platform.accessibility;
    std::set<ProcessID> found;
    bool hasWindow = false;
    walkOthers(platform, AX::application(accessibility, *hostPID), 0, [&](const Walked& walked) {
        if (walked.depth == 0) {
            return true;
        }
        if (walked.depth == 1) {
            const bool isWindow = !hasWindow && walked.element != nullptr &&
                                  AX::string(accessibility, *walked.element, "AXRole") == "AXWindow";
            hasWindow = hasWindow || isWindow;
            return isWindow;
        }
        const auto owner = ownerOfItem(accessibility, walked, *hostPID);
        if (owner) {
            found.insert(*owner);
        }
        return !owner && walked.depth < deepestWalk;
    });
    return found;
}

}  // namespace velko::Inventory

std::size_t std::hash<velko::MenuBarItem>::operator()(const velko::MenuBarItem& item) const noexcept {
    std::size_t mixed = 0;
    const auto mix = [&mixed](const auto& field) {
        const std::size_t one = std::hash<std::remove_cvref_t<decltype(field)>>{}(field);
        mixed ^= one + 0x9e3779b9U + (mixed << 6U) + (mixed >> 2U);
    };
    mix(item.bundleID);
    mix(item.appName);
    mix(item.pid);
    mix(item.title);
    mix(item.frame.x);
    mix(item.frame.y);
    mix(item.frame.width);
    mix(item.frame.height);
    return mixed;
}
