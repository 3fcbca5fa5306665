#include "Velko/Broom/BroomFrame.h"

#include <chrono>
#include <cmath>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Velko/App/AppController.h"
#include "Velko/App/Log.h"
#include "VelkoEngine/MenuBar/Inventory.h"
#include "VelkoEngine/MenuBar/MenuBarStrip.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Screen.h"

namespace velko {

namespace {

constexpr std::chrono::seconds lookAgain{1};

}  // namespace

BroomFrame::BroomFrame(const FaceParts& parts)
    : platform_(parts.platform),
      log_(parts.log),
      notices_(platform_.mainThread),
      values_(parts.controller.observe([this] { refresh(); })),
      displays_(platform_.displays.observeChanges([this] { displaysChanged(); })) {}

bool BroomFrame::counts(const Rect& frame) const {
    return MenuBarStrip::shows(platform_.displays.displays(), platform_.displays.statusBarThickness(), frame);
}

bool BroomFrame::holds(Point point) const {
    if (!chevronFrame_ || point.x < chevronFrame_->x || point.x >= chevronFrame_->maxX() ||
        point.y >= chevronFrame_->maxY()) {
        return false;
    }
    const std::vector<Display> displays = platform_.displays.displays();
    if (displays.empty()) {
        return false;
    }
    const auto displayAt = [&](double x, double y) {
        return MenuBarStrip::displayUnder(displays, {.x = x, .y = displays.front().frame.maxY() - y});
    };
    const Display* const own =
        displayAt(chevronFrame_->x + chevronFrame_->width / 2, chevronFrame_->y + chevronFrame_->height / 2);
    return own != nullptr && displayAt(point.x, point.y) == own;
}

bool BroomFrame::holdsUpwards(Point point) const {
    const std::vector<Display> displays = platform_.displays.displays();
    return !displays.empty() && holds({.x = point.x, .y = displays.front().frame.maxY() - point.y});
}

std::optional<Rect> BroomFrame::refresh() {
    const std::optional<Rect> frame = Inventory::ownItemFrame(platform_);
    // The system may not answer, or may say where it has parked an icon that nobody sees.
    if (!frame || !counts(*frame)) {
        return std::nullopt;
    }
    const bool wasOutOfSight = std::exchange(isOutOfSight_, false);
    if (std::exchange(chevronFrame_, frame) != frame || wasOutOfSight) {
        notices_.note();
    }
    return frame;
}

std::optional<Surface::Place> BroomFrame::placeBelow(double gap) const {
    return placeBelowBroom(chevronFrame_, platform_.displays.displays(),
                           platform_.displays.statusBarThickness(), gap);
}

Subscription BroomFrame::observePlace(const std::function<void()>& handler) {
    const auto frame = std::make_shared<Subscription>(observe(handler));
    // Displays may change while the broom stays in place.
    const auto displays = std::make_shared<Subscription>(platform_.displays.observeChanges(handler));
    return Subscription([frame, displays] {
        frame->end();
        displays->end();
    });
}

void BroomFrame::displaysChanged() {
    if (chevronFrame_ && !counts(*chevronFrame_)) {
        chevronFrame_.reset();
        notices_.note();
    }
    refresh();
    waitForSight();
}

/// The system may know where the icon is only a moment after it has put it there, and does not tell us then.
void BroomFrame::waitForSight() {
    const auto end = platform_.mainThread.now() + settling;
    settling_ = platform_.mainThread.every(lookAgain, [this, end] {
        refresh();
        if (platform_.mainThread.now() >= end) {
            settling_.cancel();
            judge();
        }
    });
}

void BroomFrame::judge() {
    const std::optional<Rect> frame = Inventory::ownItemFrame(platform_);
    const bool isOutOfSight = frame && !platform_.displays.displays().empty() && !counts(*frame);
    if (std::exchange(isOutOfSight_, isOutOfSight) == isOutOfSight) {
        return;
    }
    if (isOutOfSight) {
        log_.log("app", "the icon is out of sight: x=" + std::to_string(std::lround(frame->x)) +
                            " y=" + std::to_string(std::lround(frame->y)));
    }
    notices_.note();
}

namespace {

constexpr double screenMargin = 8;  // points, between a panel and the edge of its screen

}  // namespace

std::optional<Surface::Place> placeBelowBroom(const std::optional<Rect>& broom,
                                              const std::vector<Display>& displays, double statusBarThickness,
                                              double gap) {
    if (displays.empty()) {
        return std::nullopt;
    }
    const Display* display = &displays.front();
    Rect anchor{.x = display->frame.maxX()};
    if (broom) {
        const Point centre{.x = broom->x + broom->width / 2,
                           .y = display->frame.maxY() - (broom->y + broom->height / 2)};
        if (const Display* const holder = MenuBarStrip::displayUnder(displays, centre)) {
            display = holder;
            anchor = *broom;
        }
    }
    const double barHeight = MenuBarStrip::height(*display, statusBarThickness);
    const double top = display->frame.maxY() - barHeight - gap;
    anchor.y = top;
    anchor.height = barHeight + gap;
    const Rect& visible = display->visibleFrame;
    return Surface::Place{.anchor = anchor,
                          .bounds = {.x = visible.x + screenMargin,
                                     .y = visible.y + screenMargin,
                                     .width = visible.width - 2 * screenMargin,
                                     .height = top - visible.y - screenMargin}};
}

}  // namespace velko
