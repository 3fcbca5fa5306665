#include "Simulator/SimulatedStatusItem.h"

#include <utility>

namespace velko {

namespace {

[[nodiscard]] const view::MenuItem* enabledItem(const view::Menu& menu, const std::string& title) {
    for (const auto& item : menu) {
        if (!item.isEnabled) {
            continue;
        }
        if (item.title == title && item.action) {
            return &item;
        }
        if (const auto* below = enabledItem(item.submenu, title)) {
            return below;
        }
    }
    return nullptr;
}

}  // namespace

void SimulatedStatusItem::install(const std::string& autosaveName, const std::string& label,
                                  std::function<void(Click)> clicked) {
    autosaveName_ = autosaveName;
    label_ = label;
    clicked_ = std::make_shared<std::function<void(Click)>>(std::move(clicked));
    menu_.reset();
    ++revision_;
}

void SimulatedStatusItem::setImage(const Image& image) {
    image_ = image;
    ++revision_;
}

void SimulatedStatusItem::setToolTip(const std::string& text) {
    toolTip_ = text;
    ++revision_;
}

void SimulatedStatusItem::openMenu(view::Menu menu) {
    menu_ = std::move(menu);
    ++revision_;
}

void SimulatedStatusItem::click(Click click) {
    if (menu_) {
        closeMenu();
        return;
    }
    mainThread_.post([weak = std::weak_ptr(clicked_), click] {
        if (const auto clicked = weak.lock()) {
            (*clicked)(click);
        }
    });
}

bool SimulatedStatusItem::chooseFromMenu(const std::vector<std::size_t>& place) {
    if (!menu_) {
        return false;
    }
    const view::Menu menu = std::move(*menu_);
    closeMenu();
    return view::choose(menu, place);
}

bool SimulatedStatusItem::chooseFromMenu(const std::string& title) {
    const auto* item = menu_ ? enabledItem(*menu_, title) : nullptr;
    if (item == nullptr) {
        return false;
    }
    const auto action = item->action;
    closeMenu();
    action();
    return true;
}

void SimulatedStatusItem::closeMenu() {
    menu_.reset();
    ++revision_;
}

}  // namespace velko
