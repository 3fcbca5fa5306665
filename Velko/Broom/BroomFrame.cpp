#include "Velko/Broom/BroomFrame.h"

#include <chrono>
#include <cmath>
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
    // No answer, or one of an icon that is parked somewhere else, says nothing about where it stands.
    if (!frame || !counts(*frame)) {
        return std::nullopt;
    }
    const bool wasOutOfSight = std::exchange(isOutOfSight_, false);
    if (std::exchange(chevronFrame_, frame) != frame || wasOutOfSight) {
        notices_.note();
    }
    return frame;
}

void BroomFrame::displaysChanged() {
    if (chevronFrame_ && !counts(*chevronFrame_)) {
        chevronFrame_.reset();
        notices_.note();
    }
    refresh();
    waitForSight();
}

/// The system may say where the icon is only a moment after it has put it there, and tells nobody then.
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

}  // namespace velko
