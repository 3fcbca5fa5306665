#include "Simulator/Accessibility/SimulatedTrees.h"

#include <algorithm>
#include <array>
#include <optional>
#include <ranges>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace velko {

namespace {

SimulatedElementRef makeElement(ProcessID pid, SimulatedAnswers attributes) {
    auto element = std::make_shared<SimulatedElement>();
    element->pid = pid;
    element->attributes = std::move(attributes);
    return element;
}

void writeFrame(SimulatedElement& element, const Rect& frame) {
    element.attributes["AXPosition"] = Point{.x = frame.x, .y = frame.y};
    element.attributes["AXSize"] = Size{.width = frame.width, .height = frame.height};
}

void writeIcon(const SimulatedMenuBar::Slot& slot) {
    SimulatedElement& element = *slot.element;
    element.attributes = {{"AXRole", "AXMenuBarItem"}, {"AXSubrole", "AXMenuExtra"}};
    using Text = std::pair<const char*, const std::optional<std::string>*>;
    const std::array<Text, 4> texts{{
        {"AXTitle", &slot.icon.title},
        {"AXDescription", &slot.icon.description},
        {"AXHelp", &slot.icon.help},
        {"AXIdentifier", &slot.icon.identifier},
    }};
    for (const auto& [name, text] : texts) {
        if (*text) {
            element.attributes[name] = **text;
        }
    }
    if (const auto* text = std::get_if<std::string>(&slot.icon.value)) {
        element.attributes["AXValue"] = *text;
    } else if (const auto* number = std::get_if<double>(&slot.icon.value)) {
        element.attributes["AXValue"] = *number;
    }
    writeFrame(element, slot.frame);
}

}  // namespace

void SimulatedTrees::write(const SimulatedProcesses& processes, const SimulatedMenuBar& menuBar,
                           ProcessID host) {
    const auto lock = accessibility_.hold();
    for (const auto& process : processes.running()) {
        writeApp(menuBar, process.pid);
    }
    writeHost(menuBar, host);
}

void SimulatedTrees::writeApp(const SimulatedMenuBar& menuBar, ProcessID pid) {
    std::vector<SimulatedElementRef> icons;
    for (const auto& slot : menuBar.slots()) {
        if (slot.pid == pid) {
            writeIcon(slot);
            icons.push_back(slot.element);
        }
    }
    auto& attributes = accessibility_.root(pid)->attributes;
    if (icons.empty()) {
        attributes.erase("AXExtrasMenuBar");
        attributes["AXChildren"] = std::vector<SimulatedElementRef>{};
        return;
    }
    if (!attributes.contains("AXExtrasMenuBar")) {
        const auto bar = makeElement(pid, {{"AXRole", "AXMenuBar"}});
        attributes["AXExtrasMenuBar"] = bar;
        attributes["AXChildren"] = std::vector{bar};
    }
    std::get<SimulatedElementRef>(attributes["AXExtrasMenuBar"])->attributes["AXChildren"] = std::move(icons);
}

void SimulatedTrees::writeMenus(ProcessID pid, const Rect& menus) {
    const auto lock = accessibility_.hold();
    const auto root = accessibility_.root(pid);
    const auto bar = makeElement(pid, {{"AXRole", "AXMenuBar"}});
    std::vector<SimulatedElementRef> children;
    for (const Rect& frame : {Rect{.width = menus.x, .height = menus.height}, menus}) {
        children.push_back(makeElement(pid, {{"AXRole", "AXMenuBarItem"}}));
        writeFrame(*children.back(), frame);
    }
    bar->attributes["AXChildren"] = std::move(children);
    root->attributes["AXMenuBar"] = bar;
}

void SimulatedTrees::writeHost(const SimulatedMenuBar& menuBar, ProcessID host) {
    const auto root = accessibility_.root(host);
    if (!root) {
        hostWindow_.reset();
        return;
    }
    std::vector<SimulatedElementRef> apps;
    std::vector<SimulatedElementRef> buttons;
    for (const auto& slot : menuBar.slots() | std::views::reverse) {
        const bool isSecondIcon =
            std::ranges::any_of(apps, [&](const auto& element) { return element->pid == slot.pid; });
        if (!slot.shows() || isSecondIcon) {
            continue;
        }
        const bool isSystem = slot.icon.systemItem.has_value();
        const auto element =
            makeElement(isSystem ? host : slot.pid,
                        {{"AXRole", isSystem ? "AXButton" : "AXApplication"},
                         {"AXTitle", isSystem ? slot.icon.title.value_or("") : slot.appName}});
        writeFrame(*element, slot.frame);
        (isSystem ? buttons : apps).push_back(element);
    }
    if (!hostWindow_ || hostWindow_->pid != host) {
        hostWindow_ = makeElement(host, {{"AXRole", "AXWindow"}});
    }
    hostWindow_->attributes["AXChildren"] =
        std::vector{makeElement(host, {{"AXRole", "AXGroup"}, {"AXChildren", std::move(apps)}}),
                    makeElement(host, {{"AXRole", "AXGroup"}, {"AXChildren", std::move(buttons)}})};
    std::vector<SimulatedElementRef> children;
    if (const auto bar = root->attributes.find("AXExtrasMenuBar"); bar != root->attributes.end()) {
        children.push_back(std::get<SimulatedElementRef>(bar->second));
    }
    children.push_back(hostWindow_);
    root->attributes["AXChildren"] = std::move(children);
}

}  // namespace velko
