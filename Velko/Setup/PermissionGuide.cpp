#include "Velko/Setup/PermissionGuide.h"

#include <algorithm>
#include <utility>

#include "Velko/App/AppController.h"
#include "Velko/View/Node.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/Background/Awaited.h"
#include "VelkoEngine/Ports/Screen.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

namespace {

constexpr const char* settingsApp = "com.apple.systempreferences";
constexpr double sidebarWidth = 215;  // the settings window's left part on macOS 27; the list is right of it
constexpr double usualHeight = 64;    // the panel's height as long as it is not on the screen

constexpr auto pointing = "Switch Velko on in this list.";

view::Node tree(const char* symbol, const char* words) {
    view::Node icon{.id = "guide:symbol",
                    .content = view::Symbol{.name = symbol, .points = 22, .ink = view::Ink::accent}};
    view::Node row =
        view::row("guide", {std::move(icon), view::text("guide:text", words, view::Text::Style::headline)});
    std::get<view::Stack>(row.content).padding = 14;
    return row;
}

double areaOf(const Rect& rect) {
    return rect.width * rect.height;
}

}  // namespace

PermissionGuide::PermissionGuide(const FaceParts& parts, std::function<void()> done)
    : parts_(parts), done_(std::move(done)), panel_(parts.ports.surfaces, Surfaces::Kind::permissionGuide) {}

void PermissionGuide::start() {
    if (!parts_.controller.values().problems.trustMissing) {
        return;
    }
    beat_ = Awaited::every(parts_.platform, "the permission", Timing::permissionGuideFollowInterval,
                           [this] { follow(); });
}

void PermissionGuide::stop() {
    beat_.cancel();
    panel_.close();
}

void PermissionGuide::follow() {
    if (!parts_.controller.values().problems.trustMissing) {
        thank();
    } else if (const auto window = settingsWindow()) {
        show(placeFor(*window));
    } else {
        panel_.close();
    }
}

void PermissionGuide::show(const Surface::Place& place) {
    if (!panel_.isOpen()) {
        panel_.open({.place = place,
                     .motion = {.fade = parts_.ports.surfaces.reducesMotion() ? Timing::Seconds::zero()
                                                                              : Timing::reducedMotionFade},
                     .content = tree("arrow.up", pointing)});
        parts_.ports.surfaces.announce(pointing);
    } else {
        panel_.move(place);
    }
}

void PermissionGuide::thank() {
    panel_.update(tree("checkmark.circle.fill", "Done. Thank you!"));
    beat_ = Awaited::after(parts_.platform, "the permission", Timing::permissionGuideDoneHold, [this] {
        panel_.close();
        done_();
    });
}

std::optional<Rect> PermissionGuide::settingsWindow() const {
    const auto pids = parts_.platform.workspace.pids(settingsApp);
    const auto windows = pids.empty() ? std::nullopt : parts_.platform.windows.onScreen();
    std::optional<Rect> largest;
    for (const WindowInfo& window : windows.value_or(std::vector<WindowInfo>{})) {
        const bool isTheirs = window.ownerPID && std::ranges::count(pids, *window.ownerPID) > 0;
        if (isTheirs && window.layer == 0 && window.frame &&
            (!largest || areaOf(*window.frame) > areaOf(*largest))) {
            largest = window.frame;
        }
    }
    return largest;
}

Surface::Place PermissionGuide::placeFor(const Rect& window) const {
    const auto displays = parts_.platform.displays.displays();
    if (displays.empty()) {
        return {.anchor = window, .bounds = window};
    }
    // The origin of windows is at the top of the primary screen, that of panels at its bottom.
    const Rect& primary = displays.front().frame;
    const Rect flipped{
        .x = window.x, .y = primary.maxY() - window.maxY(), .width = window.width, .height = window.height};
    const Point middle{.x = flipped.x + flipped.width / 2, .y = flipped.y + flipped.height / 2};
    const auto at = std::ranges::find_if(
        displays, [&](const Display& display) { return display.frame.contains(middle); });
    const Rect bounds = (at == displays.end() ? displays.front() : *at).visibleFrame;
    const auto frame = panel_.frame();
    const double height = frame ? frame->height : usualHeight;
    const double sidebar = std::min(sidebarWidth, flipped.width / 2);
    return {.anchor = {.x = flipped.x + sidebar,
                       .y = std::max(flipped.y, bounds.y + height),
                       .width = flipped.width - sidebar,
                       .height = 0},
            .bounds = bounds};
}

}  // namespace velko
