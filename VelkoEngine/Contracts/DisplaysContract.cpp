#include <algorithm>
#include <string>

#include "VelkoEngine/Contracts/Contracts.h"
#include "VelkoEngine/MenuBar/MenuBarStrip.h"
#include "VelkoEngine/Ports/Displays.h"

namespace velko::Contracts {

namespace {

bool isWithin(const Rect& inner, const Rect& outer) {
    return inner.x >= outer.x && inner.y >= outer.y && inner.maxX() <= outer.maxX() &&
           inner.maxY() <= outer.maxY();
}

}  // namespace

void checkDisplays(Displays& displays, Checks& checks) {
    const auto all = displays.displays();
    const auto seen = std::to_string(all.size()) + " displays";
    expect(checks, "displays: the primary screen comes first and holds the origin",
           all.empty() || (all.front().frame.x == 0 && all.front().frame.y == 0), seen);
    expect(checks, "displays: every screen has a size and its visible frame lies within it",
           std::ranges::all_of(all,
                               [](const Display& display) {
                                   return display.frame.width > 0 && display.frame.height > 0 &&
                                          isWithin(display.visibleFrame, display.frame);
                               }),
           seen);
    expect(checks, "displays: room beside a camera housing is only where one is",
           std::ranges::all_of(all, [](const Display& display) {
               const auto housing = MenuBarStrip::housing(display);
               return display.safeAreaTop >= 0 &&
                      (!housing || (display.safeAreaTop > 0 && isWithin(*housing, display.frame)));
           }));
    const double thickness = displays.statusBarThickness();
    expect(checks, "displays: the status bar is as high as a line of icons",
           thickness > 10 && thickness < 100, std::to_string(thickness));

    Subscription subscription = displays.observeChanges([] {});
    const bool wasActive = subscription.isActive();
    subscription.end();
    expect(checks, "displays: observing can be ended", wasActive && !subscription.isActive());
}

}  // namespace velko::Contracts
