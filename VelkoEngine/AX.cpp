#include "VelkoEngine/AX.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "VelkoCore/Timing.h"
#include "VelkoEngine/NumberText.h"
#include "VelkoEngine/Ports/Processes.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko::AX {

namespace {

template <class Value>
std::optional<Value> value(const Accessibility& accessibility, const AXElement& element,
                           const std::string& attribute) {
    auto read = accessibility.attribute(element, attribute);
    if (!read) {
        return std::nullopt;
    }
    auto* const held = std::get_if<Value>(&*read);
    return held != nullptr ? std::optional<Value>(std::move(*held)) : std::nullopt;
}

std::optional<ProcessID> processNamed(const Processes& processes, const std::string& name) {
    const auto pids = processes.list();
    if (!pids) {
        return std::nullopt;
    }
    const auto found = std::ranges::find_if(
        *pids, [&](ProcessID candidate) { return candidate > 0 && processes.name(candidate) == name; });
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
    const auto read = accessibility.attribute(element, attribute);
    if (!read) {
        return {};
    }
    if (const auto* const text = std::get_if<std::string>(&*read)) {
        return *text;
    }
    if (const auto* const number = std::get_if<double>(&*read)) {
        return decimalText(*number);
    }
    if (const auto* const flag = std::get_if<bool>(&*read)) {
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

std::optional<Rect> frame(const Accessibility& accessibility, const AXElement& element) {
    const auto position = value<Point>(accessibility, element, "AXPosition");
    if (!position || !std::isfinite(position->x) || !std::isfinite(position->y)) {
        return std::nullopt;
    }
    const auto size = value<Size>(accessibility, element, "AXSize");
    if (!size || !std::isfinite(size->width) || !std::isfinite(size->height)) {
        return std::nullopt;
    }
    return Rect{position->x, position->y, size->width, size->height};
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
    const auto bar = element(accessibility, application(accessibility, pid), "AXExtrasMenuBar");
    return bar ? children(accessibility, *bar) : std::vector<AXElement>{};
}

std::optional<ProcessID> pid(const Platform& platform, const BundleID& bundleID,
                             const std::string& processName) {
    const auto running = platform.workspace.pids(bundleID);
    return running.empty() ? processNamed(platform.processes, processName) : std::optional(running.front());
}

std::optional<ProcessID> liveActivityHelperPID(const Platform& platform) {
    return pid(platform, "com.apple.chrono.WidgetRenderer-Activities", "WidgetRenderer_Activities");
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

}  // namespace velko::AX
