#include "Simulator/MenuBar/SimulatedIcons.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <ranges>
#include <utility>

#include "Simulator/Desktop/SimulatedPointer.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Machine/SimulatedMac.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "VelkoEngine/MenuBar/MenuBarStrip.h"

namespace velko {

std::vector<BundleID> VisibleIcons::apps() const {
    std::vector<BundleID> owners;
    for (const auto& slot : menuBar_.slots() | std::views::reverse) {
        if (slot.shows() && !slot.icon.systemItem) {
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
        if (slot.shows() && (slot.pid != own || isBroomInSight)) {
            icons.push_back({.pid = slot.pid, .title = slot.icon.title, .frame = slot.frame});
            look.elements.emplace_back(slot.frame, slot.element);
        }
    }
    look.isChanged = std::exchange(seen_, icons) != icons;
    return look;
}

namespace {

constexpr auto placingTime = std::chrono::milliseconds(150);  ///< of a new icon
constexpr std::size_t pictureColumns = 108;

}  // namespace

SimulatedIcons::SimulatedIcons(SimulatedMac& mac, MachineThread& thread,
                               SimulatedAccessibility& accessibility)
    : mac_(mac), thread_(thread), trees_(accessibility), broom_(mac, thread, [this] { refresh(); }) {}

void SimulatedIcons::put(ProcessID owner, SimulatedIcon icon, std::optional<std::size_t> place) {
    const auto element = menuBar_.add(*mac_.processes.find(owner), std::move(icon), place);
    element->actions["AXPress"] = [this, owner] { mac_.openMenu(owner); };
}

void SimulatedIcons::change(ProcessID pid, std::size_t index,
                            const std::function<void(SimulatedIcon&)>& change) {
    auto* slot = menuBar_.find(pid, index);
    if (slot == nullptr) {
        return;
    }
    const SimulatedIcon before = slot->icon;
    change(slot->icon);
    const SimulatedIcon after = slot->icon;
    const auto element = slot->element;
    refresh();
    const std::array<std::pair<const char*, bool>, 3> changes{{
        {"AXTitleChanged", after.title != before.title},
        {"AXValueChanged", after.value != before.value},
        {"AXResized", after.width != before.width},
    }};
    for (const auto& [notification, isMade] : changes) {
        if (isMade) {
            mac_.accessibility.notify(element, notification);
        }
    }
}

void SimulatedIcons::add(ProcessID pid, SimulatedIcon icon, std::optional<std::size_t> place) {
    if (mac_.processes.find(pid) == nullptr) {
        return;
    }
    put(pid, std::move(icon), place);
    if (pid == mac_.processes.ownPID()) {
        broom_.settle(BroomSpot::nowhere, placingTime);
        mac_.activity.lookedAt();
    }
    refresh();
}

void SimulatedIcons::remove(ProcessID pid, std::size_t index) {
    if (const auto* slot = menuBar_.find(pid, index)) {
        mac_.accessibility.notify(slot->element, "AXUIElementDestroyed");
        menuBar_.remove(pid, index);
        refresh();
    }
}

SimulatedElement* SimulatedIcons::element(ProcessID pid, std::size_t index) {
    const auto* slot = menuBar_.find(pid, index);
    return slot == nullptr ? nullptr : slot->element.get();
}

void SimulatedIcons::click(Point location) {
    mac_.pointer.press(location);
    mac_.pointer.release();
    const auto owner = mac_.windows.menuOwner();
    mac_.closeMenu();
    const auto* slot = menuBar_.under(location);
    if (slot != nullptr && slot->pid != owner && slot->pid != mac_.processes.ownPID()) {
        mac_.openMenu(slot->pid);
    }
}

bool SimulatedIcons::clickOn(ProcessID pid, std::size_t index) {
    const auto* slot = menuBar_.find(pid, index);
    if (slot == nullptr || !slot->shows()) {
        return false;
    }
    click({.x = slot->frame.x + slot->frame.width / 2, .y = slot->frame.y + slot->frame.height / 2});
    return true;
}

void SimulatedIcons::setHitsEndAtHost(bool host) {
    hitsEndAtHost_ = host;
    refresh();
}

std::string SimulatedIcons::picture() const {
    std::string picture = menuBar_.picture(thread_.date(), mac_.processes.ownPID(), pictureColumns);
    if (const auto owner = mac_.windows.menuOwner()) {
        picture += "\n" + mac_.processes.name(*owner).value_or("?") + " has its menu open";
    }
    return picture;
}

/// The room in the bar of the primary screen; of the last one that there was.
SimulatedMenuBar::Room SimulatedIcons::room() {
    const double height = mac_.displays.statusBarThickness();
    if (const auto screens = mac_.displays.displays(); !screens.empty()) {
        const Display& screen = screens.front();
        const Point middle{.x = screen.frame.x + screen.frame.width / 2};
        const Rect guessed{.x = middle.x - SimulatedDisplays::housingWidth / 2,
                           .width = SimulatedDisplays::housingWidth};
        room_ = {.left = screen.frame.x, .right = screen.frame.maxX()};
        if (MenuBarStrip::isNotched(screen)) {
            room_.left = MenuBarStrip::housing(screen).value_or(guessed).maxX();
            room_.elsewhere = middle;
        }
    }
    room_.height = height;
    room_.broom = mac_.processes.ownPID();
    SimulatedMenuBar::Room room = room_;
    if (const auto menus = mac_.windows.frontMenus(height)) {
        room.left = std::max(room.left, menus->maxX());
    }
    return room;
}

void SimulatedIcons::refresh() {
    menuBar_.layOut(mac_.framework.inForce(), room());
    trees_.write(mac_.processes, menuBar_, mac_.menuBarHost());
    if (const auto menus = mac_.windows.frontMenus(mac_.displays.statusBarThickness())) {
        trees_.writeMenus(mac_.windows.front(), *menus);
    }
    broom_.writeFrame();
    auto [isChanged, elements] = visible_.look(mac_.processes.ownPID(), broom_.isInSight());
    if (const auto window = hitsEndAtHost_ ? trees_.hostWindow() : nullptr) {
        for (auto& [frame, element] : elements) {
            element = window;
        }
    }
    if (const auto menus = mac_.windows.frontMenus(mac_.displays.statusBarThickness())) {
        elements.emplace_back(*menus, mac_.accessibility.root(mac_.windows.front()));
    }
    mac_.accessibility.setOnScreen(std::move(elements));
    if (isChanged && mac_.onMenuBarChange) {
        mac_.onMenuBarChange();
    }
}

}  // namespace velko
