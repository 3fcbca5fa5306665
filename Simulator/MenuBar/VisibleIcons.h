#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/MenuBar/SimulatedMenuBar.h"
#include "VelkoCore/Geometry.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoEngine/Ports/Processes.h"

namespace velko {

/// What a person sees in the menu bar.
class VisibleIcons final {
 public:
    /// The bar outlives this.
    explicit VisibleIcons(const SimulatedMenuBar& menuBar) : menuBar_(menuBar) {}

    /// The owners of the apps' icons that show, left to right, once per icon.
    [[nodiscard]] std::vector<BundleID> apps() const;
    /// The titles of the system's own items that show, left to right.
    [[nodiscard]] std::vector<std::string> systemItems() const;

    /// What shows now. Velko's own icon counts only where a person can see it.
    struct Look {
        bool isChanged = false;  ///< since the last look
        SimulatedAccessibility::OnScreen elements;
    };
    [[nodiscard]] Look look(ProcessID own, bool isBroomInSight);

 private:
    struct Icon {
        ProcessID pid = 0;
        std::optional<std::string> title;
        Rect frame;

        bool operator==(const Icon&) const = default;
    };

    const SimulatedMenuBar& menuBar_;
    std::vector<Icon> seen_;  ///< in the last look
};

}  // namespace velko
