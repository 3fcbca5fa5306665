#pragma once

#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Accessibility/SimulatedElement.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/MenuBar/SimulatedMenuBar.h"

namespace velko {

/// Writes what the menu bar holds into the Accessibility trees of the apps and of the bar's host.
///
/// The host's tree is assumed, nothing documents it: an application, its window, and in that a group with
/// an element of every app whose icons show and a group with a button for every item of the system's own.
/// The elements of apps answer from their own processes.
class SimulatedTrees final {
 public:
    explicit SimulatedTrees(SimulatedAccessibility& accessibility) : accessibility_(accessibility) {}

    /// Brings all trees up to date. `host` is the process that presents the bar, 0 without one.
    void write(const SimulatedProcesses& processes, const SimulatedMenuBar& menuBar, ProcessID host);

    /// The window of the bar's host; null without one.
    [[nodiscard]] const SimulatedElementRef& hostWindow() const noexcept { return hostWindow_; }

 private:
    void writeApp(const SimulatedMenuBar& menuBar, ProcessID pid);
    void writeHost(const SimulatedMenuBar& menuBar, ProcessID host);

    SimulatedAccessibility& accessibility_;
    SimulatedElementRef hostWindow_;
};

}  // namespace velko
