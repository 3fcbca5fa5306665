#include "Simulator/MenuBar/SimulatedStatusItem.h"

#include <algorithm>
#include <array>
#include <utility>

#include "VelkoEngine/Ports/Pointer.h"

namespace velko {

namespace {

using Telling = SimulatedClick::Telling;

/// The ways in which plain clicks are reported, in turn. Other clicks are reported in the first two ways.
constexpr std::array usualTellings{Telling::mouse, Telling::system, Telling::stale, Telling::other,
                                   Telling::doubled};
constexpr std::size_t waysOfNoPlainClick = 2;
constexpr std::chrono::milliseconds doubledAfter{10};
constexpr std::chrono::seconds longAgo{40};

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
    imagesSetAt_.clear();
    ++revision_;
}

void SimulatedStatusItem::setImage(const Image& image) {
    const auto now = thread_.now();
    imagesInVain_ += !imagesSetAt_.empty() && image == image_ ? 1 : 0;
    std::erase_if(imagesSetAt_, [now](auto at) { return now - at >= std::chrono::seconds(1); });
    imagesSetAt_.push_back(now);
    mostImages_ = std::max(mostImages_, imagesSetAt_.size());
    image_ = image;
    ++revision_;
    thread_.spend(imageCost);
}

void SimulatedStatusItem::setToolTip(const std::string& text) {
    toolTip_ = text;
    ++revision_;
}

void SimulatedStatusItem::openMenu(view::Menu menu, std::function<void()> closed) {
    menu_ = std::move(menu);
    menuClosed_ = std::move(closed);
    ++revision_;
}

void SimulatedStatusItem::click(const SimulatedClick& click) {
    if (menu_) {
        closeMenu();
        return;
    }
    auto telling = click.telling;
    if (telling == Telling::usual) {
        const bool isPlain = !click.isRight && !click.option && !click.control;
        telling = usualTellings.at(clicks_++ % (isPlain ? usualTellings.size() : waysOfNoPlainClick));
    }
    if (telling == Telling::lost) {
        return;
    }
    act(told(click, telling));
    if (telling == Telling::doubled) {
        thread_.happen(doubledAfter, [this, again = told(click, telling)] { act(again); });
    }
}

StatusItem::Click SimulatedStatusItem::told(const SimulatedClick& click,
                                            SimulatedClick::Telling telling) const {
    Click result{.event = Event{.type = click.isRight ? Event::Type::rightMouse : Event::Type::leftMouse,
                                .age = std::chrono::milliseconds(2),
                                .option = click.option,
                                .control = click.control},
                 .option = click.option,
                 .control = click.control};
    switch (telling) {
        case Telling::usual:
        case Telling::mouse:
        case Telling::doubled:
        case Telling::lost: break;
        case Telling::system:
            // The modifier keys are missing: the menu bar's host does not pass them on.
            result.event = Event{.type = Event::Type::systemDefined,
                                 .subtype = Event::mouseButtons,
                                 .data = click.isRight ? 2 : 1};
            break;
        case Telling::other:
            result.event = Event{.type = Event::Type::other};
            result.pressedButtons = click.isRight ? Pointer::rightButton : 0;
            break;
        case Telling::stale: result.event = Event{.type = Event::Type::rightMouse, .age = longAgo}; break;
    }
    return result;
}

void SimulatedStatusItem::pressByVoiceOver() {
    if (isMenuOpen()) {
        closeMenu();  // the open menu has the keyboard and takes the press
        return;
    }
    const bool isFirst = clicks_++ % 2 == 0;
    act({.event = isFirst ? std::nullopt
                          : std::optional(Event{.type = Event::Type::other, .option = true, .control = true}),
         .option = true,
         .control = true,
         .isVoiceOverOn = true});
}

void SimulatedStatusItem::act(const Click& click) {
    thread_.post([weak = std::weak_ptr(clicked_), click] {
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
    if (auto closed = std::exchange(menuClosed_, nullptr)) {
        thread_.post(std::move(closed));
    }
}

}  // namespace velko
