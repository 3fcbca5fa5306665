#include "VelkoEngine/MenuBar/AX.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

#include "VelkoCore/NumberText.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/MenuBar/Inventory.h"
#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/Processes.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

namespace AX {

namespace {

template <class Value>
std::optional<Value> value(AXAnswer answer) {
    auto* const held = answer ? std::get_if<Value>(&*answer) : nullptr;
    return held != nullptr ? std::optional<Value>(std::move(*held)) : std::nullopt;
}

template <class Value>
std::optional<Value> value(const Accessibility& accessibility, const AXElement& element,
                           const std::string& attribute) {
    return value<Value>(accessibility.attribute(element, attribute));
}

std::optional<ProcessID> processNamed(const Processes& processes, const std::string& name) {
    const auto pids = processes.list();
    if (!pids) {
        return std::nullopt;
    }
    const auto found = std::ranges::find_if(
        *pids, [&](ProcessID candidate) { return isReal(candidate) && processes.name(candidate) == name; });
    return found != pids->end() ? std::optional(*found) : std::nullopt;
}

}  // namespace

AXElement application(const Accessibility& accessibility, ProcessID pid) {
    return accessibility.application(pid, Timing::axMessagingTimeout);
}

std::optional<std::string> string(const Accessibility& accessibility, const AXElement& element,
                                  const std::string& attribute) {
    return value<std::string>(accessibility, element, attribute);
}

std::string attributeText(const Accessibility& accessibility, const AXElement& element,
                          const std::string& attribute) {
    return text(accessibility.attribute(element, attribute));
}

bool isHeard(const AXAnswer& answer) {
    return answer || answer.error() == AXError::noValue || answer.error() == AXError::attributeUnsupported ||
           answer.error() == AXError::notImplemented;
}

std::vector<AXAnswer> attributes(const Accessibility& accessibility, const AXElement& element,
                                 const std::vector<std::string>& names) {
    auto answers = accessibility.attributes(element, names);
    return answers ? *std::move(answers)
                   : std::vector<AXAnswer>(names.size(), std::unexpected(answers.error()));
}

std::string text(const AXAnswer& answer) {
    if (!answer) {
        return {};
    }
    if (const auto* const words = std::get_if<std::string>(&*answer)) {
        return *words;
    }
    if (const auto* const number = std::get_if<double>(&*answer)) {
        return decimalText(*number);
    }
    if (const auto* const flag = std::get_if<bool>(&*answer)) {
        return *flag ? "1" : "0";
    }
    return {};
}

std::optional<AXElement> element(const Accessibility& accessibility, const AXElement& element,
                                 const std::string& attribute) {
    return value<AXElement>(accessibility, element, attribute);
}

std::vector<AXElement> children(const Accessibility& accessibility, const AXElement& element) {
    return value<std::vector<AXElement>>(accessibility, element, "AXChildren")
        .value_or(std::vector<AXElement>{});
}

std::optional<Rect> frame(const AXAnswer& position, const AXAnswer& size) {
    const auto origin = value<Point>(position);
    const auto extent = value<Size>(size);
    if (!origin || !std::isfinite(origin->x) || !std::isfinite(origin->y) || !extent ||
        !std::isfinite(extent->width) || !std::isfinite(extent->height)) {
        return std::nullopt;
    }
    return Rect{origin->x, origin->y, extent->width, extent->height};
}

std::optional<Rect> frame(const Accessibility& accessibility, const AXElement& element) {
    // Scans need this, so it asks for each attribute alone, which every app can answer.
    const auto position = accessibility.attribute(element, "AXPosition");
    return position ? frame(position, accessibility.attribute(element, "AXSize")) : std::nullopt;
}

std::string title(const Accessibility& accessibility, const AXElement& element) {
    static constexpr std::array attributes{"AXTitle", "AXDescription", "AXHelp", "AXIdentifier"};
    for (const char* const attribute : attributes) {
        if (auto text = string(accessibility, element, attribute); text && !text->empty()) {
            return *std::move(text);
        }
    }
    return {};
}

std::vector<AXElement> statusItems(const Accessibility& accessibility, ProcessID pid) {
    return statusItemsIfHeard(accessibility, pid).value_or(std::vector<AXElement>{});
}

std::optional<std::vector<AXElement>> statusItemsIfHeard(const Accessibility& accessibility, ProcessID pid) {
    const AXAnswer told = accessibility.attribute(application(accessibility, pid), "AXExtrasMenuBar");
    if (!isHeard(told)) {
        return std::nullopt;
    }
    const auto bar = value<AXElement>(told);
    if (!bar) {
        return std::vector<AXElement>{};
    }
    AXAnswer items = accessibility.attribute(*bar, "AXChildren");
    if (!isHeard(items)) {
        return std::nullopt;
    }
    return value<std::vector<AXElement>>(std::move(items)).value_or(std::vector<AXElement>{});
}

std::vector<ProcessID> pids(const Platform& platform, const BundleID& bundleID) {
    auto running = platform.workspace.pids(bundleID);
    std::erase_if(running, [](ProcessID each) { return !isReal(each); });
    return running;
}

std::optional<ProcessID> pid(const Platform& platform, const BundleID& bundleID,
                             const std::string& processName) {
    const auto running = pids(platform, bundleID);
    return running.empty() ? processNamed(platform.processes, processName) : std::optional(running.front());
}

std::optional<ProcessID> liveActivityHelperPID(const Platform& platform) {
    return pid(platform, "com.apple.chrono.WidgetRenderer-Activities", "WidgetRenderer_Activities");
}

std::optional<ProcessID> menuBarHostPID(const Platform& platform) {
    return pid(platform, "com.apple.MenuBarAgent", "MenuBarAgent");
}

bool isTrusted(const Platform& platform) {
    return platform.accessibility.isTrusted();
}

void promptForTrust(const Platform& platform) {
    platform.accessibility.promptForTrust();
}

void openAccessibilitySettings(const Platform& platform) {
    platform.workspace.openURL(
        "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility");
}

}  // namespace AX

namespace TrustEvidence {

namespace {

constexpr std::size_t mostWitnesses = 3;

}  // namespace

std::vector<ProcessID> witnesses(const Platform& platform) {
    std::vector<ProcessID> pids;
    if (const auto host = AX::menuBarHostPID(platform)) {
        pids.push_back(*host);
    }
    for (const Inventory::AppRef& app : Inventory::runningApps(platform)) {
        if (pids.size() == mostWitnesses) {
            break;
        }
        if (pids.empty() || app.pid != pids.front()) {
            pids.push_back(app.pid);
        }
    }
    return pids;
}

std::optional<bool> ask(const Platform& platform, const std::vector<ProcessID>& witnesses) {
    const Accessibility& accessibility = platform.accessibility;
    for (const ProcessID pid : witnesses) {
        const auto role = accessibility.attribute(AX::application(accessibility, pid), "AXRole");
        if (AX::isHeard(role)) {
            return true;
        }
        if (role.error() == AXError::apiDisabled) {
            return false;
        }
    }
    return std::nullopt;
}

}  // namespace TrustEvidence

}  // namespace velko
