#include <map>
#include <ranges>
#include <variant>
#include <vector>

#include "Playground/Html/Images.h"
#include "Playground/Html/Markup.h"
#include "Playground/Web/Picture.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/MenuBar/SimulatedMenuBar.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"

namespace velko::web {

namespace {

using html::Attribute;
using html::Attributes;
using Slot = SimulatedMenuBar::Slot;

constexpr double symbolPoints = 16;
constexpr int controlCenter = 1;
constexpr int wiFi = 2;

std::string widthOf(const Slot& slot) {
    return "--points:" + html::pixels(slot.frame.width);
}

std::string systemItem(const Slot& slot) {
    const std::string name = slot.icon.title.value_or("");
    const int number = slot.icon.systemItem.value_or(0);
    Attributes attributes{{"class", "status-item system"},
                          {"data-key", "system:" + std::to_string(number)},
                          {"style", widthOf(slot)}};
    if (number == SimulatedApp::clockItem) {
        attributes.push_back({"data-clock", "bar"});
        return html::element("span", attributes);
    }
    attributes.push_back({"role", "img"});
    attributes.push_back({"aria-label", name});
    switch (number) {
        case controlCenter: return html::element("span", attributes, html::glyph("switch.2", symbolPoints));
        case wiFi: return html::element("span", attributes, html::glyph("wifi", symbolPoints));
        default: return html::textElement("span", attributes, name);
    }
}

std::string broomFace(const StatusItem::Image& image) {
    if (const auto* symbol = std::get_if<StatusItem::Symbol>(&image)) {
        return html::glyph(symbol->name, symbolPoints);
    }
    return html::svg(std::get<view::Drawing>(image));
}

std::string broom(const Slot& slot, const SimulatedStatusItem& item) {
    const std::string label = item.label().empty() ? "Velko" : item.label();
    return html::element("button",
                         {{"type", "button"},
                          {"class", "status-item broom"},
                          {"id", "broom"},
                          {"tabindex", "0"},
                          {"aria-label", label},
                          {"aria-haspopup", "menu"},
                          Attribute::unlessEmpty("title", item.toolTip()),
                          {"style", widthOf(slot)}},
                         broomFace(item.image()));
}

/// The text that an icon shows beside its app's name; may be empty.
std::string textOf(const Slot& slot) {
    const std::string title = slot.icon.title.value_or("");
    return title == slot.appName ? "" : title;
}

std::string badgeOf(const Slot& slot) {
    const auto* badge = std::get_if<std::string>(&slot.icon.value);
    return badge == nullptr ? "" : *badge;
}

std::string appItem(const Slot& slot, std::size_t index) {
    const std::string text = textOf(slot);
    const std::string badge = badgeOf(slot);
    std::string name = slot.appName.empty() ? slot.bundleID : slot.appName;
    name = name.empty() ? "An app without a name" : name;
    std::string spoken = name;
    for (const std::string& more : {text, badge}) {
        spoken += more.empty() ? "" : ", " + more;
    }
    const std::string pid = std::to_string(slot.pid);
    return html::element(
        "button",
        {{"type", "button"},
         {"class", "status-item app"},
         {"data-key", pid + ":" + std::to_string(index)},
         {"data-pid", pid},
         {"data-index", std::to_string(index)},
         {"data-bundle", slot.bundleID},
         {"tabindex", "-1"},
         {"aria-label", spoken},
         {"aria-haspopup", "menu"},
         {"title", name},
         {"style", widthOf(slot)}},
        html::barGlyph(slot.bundleID, name) +
            (text.empty() ? "" : html::textElement("span", {{"class", "status-text"}}, text)) +
            (badge.empty() ? "" : html::textElement("span", {{"class", "status-badge"}}, badge)));
}

}  // namespace

std::string drawBar(Session& session) {
    const SimulatedMac& mac = session.mac();
    std::map<ProcessID, std::size_t> counts;
    std::vector<std::string> items;
    for (const Slot& slot : mac.menuBar().slots()) {
        const std::size_t index = counts[slot.pid]++;
        if (!slot.shows()) {
            continue;
        }
        if (slot.icon.systemItem) {
            items.push_back(systemItem(slot));
        } else {
            items.push_back(slot.pid == mac.processes.ownPID() ? broom(slot, mac.statusItem)
                                                               : appItem(slot, index));
        }
    }
    std::string markup;
    for (const std::string& item : items | std::views::reverse) {
        markup += item;
    }
    return markup;
}

}  // namespace velko::web
