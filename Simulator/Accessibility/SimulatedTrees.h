#pragma once

#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Accessibility/SimulatedElement.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/MenuBar/SimulatedMenuBar.h"

namespace velko {

/// Writes what the menu bar holds into the Accessibility trees of the apps and of the bar's host.
///
/// The host's tree is an assumption, because nothing documents it. The application has one window with two
/// groups. One group has an element for each app whose icons show; these elements belong to the apps' own
/// processes. The other group has a button for each of the system's own items.
class SimulatedTrees final {
 public:
    explicit SimulatedTrees(SimulatedAccessibility& accessibility) : accessibility_(accessibility) {}

    /// Updates all trees. `host` is the process that shows the bar, or 0 if there is none.
    void write(const SimulatedProcesses& processes, const SimulatedMenuBar& menuBar, ProcessID host);

    /// Gives an app menus of its own, from the Apple menu to the end of `menus`.
    void writeMenus(ProcessID pid, const Rect& menus);

    /// The window of the bar's host; null without one.
    [[nodiscard]] const SimulatedElementRef& hostWindow() const noexcept { return hostWindow_; }

 private:
    void writeApp(const SimulatedMenuBar& menuBar, ProcessID pid);
    void writeHost(const SimulatedMenuBar& menuBar, ProcessID host);

    SimulatedAccessibility& accessibility_;
    SimulatedElementRef hostWindow_;
};

}  // namespace velko
