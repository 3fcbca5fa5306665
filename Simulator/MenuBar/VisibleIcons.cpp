#include "Simulator/MenuBar/VisibleIcons.h"

#include <ranges>
#include <utility>

namespace velko {

std::vector<BundleID> VisibleIcons::apps() const {
    std::vector<BundleID> owners;
    for (const auto& slot : menuBar_.slots() | std::views::reverse) {
        if (slot.isVisible && !slot.icon.systemItem) {
            owners.push_back(slot.bundleID);
        }
    }
    return owners;
}

std::vector<std::string> VisibleIcons::systemItems() const {
    std::vector<std::string> titles;
    for (const auto& slot : menuBar_.slots() | std::views::reverse) {
        if (slot.isVisible && slot.icon.systemItem) {
            titles.push_back(slot.icon.title.value_or(""));
        }
    }
    return titles;
}

VisibleIcons::Look VisibleIcons::look(ProcessID own, bool isBroomInSight) {
    std::vector<Icon> icons;
    Look look;
    for (const auto& slot : menuBar_.slots()) {
        if (slot.isVisible && (slot.pid != own || isBroomInSight)) {
            icons.push_back({.pid = slot.pid, .title = slot.icon.title, .frame = slot.frame});
            look.elements.emplace_back(slot.frame, slot.element);
        }
    }
    look.isChanged = std::exchange(seen_, icons) != icons;
    return look;
}

}  // namespace velko
