#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Accessibility/SimulatedTrees.h"
#include "Simulator/MenuBar/SimulatedBroom.h"
#include "Simulator/MenuBar/SimulatedMenuBar.h"
#include "VelkoCore/Geometry.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
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

/// The icons of the machine's programs, and what follows from them: where they are, what Accessibility says
/// about them, and what a person sees. The icons of an app are counted in the order in which it added them,
/// from 0.
class SimulatedIcons final : private NonCopyable {
 public:
    /// All outlive this. `accessibility` belongs to `mac`.
    SimulatedIcons(SimulatedMac& mac, MachineThread& thread, SimulatedAccessibility& accessibility);

    /// Puts an icon into the bar. `refresh` has to follow.
    void put(ProcessID owner, SimulatedIcon icon, std::optional<std::size_t> place = std::nullopt);
    void add(ProcessID pid, SimulatedIcon icon, std::optional<std::size_t> place);
    void change(ProcessID pid, std::size_t index, const std::function<void(SimulatedIcon&)>& change);
    void remove(ProcessID pid, std::size_t index);
    void removeAll(ProcessID pid) { menuBar_.removeAll(pid); }
    [[nodiscard]] SimulatedElement* element(ProcessID pid, std::size_t index);

    // The same as those of `SimulatedMac`.
    void click(Point location);
    bool clickOn(ProcessID pid, std::size_t index);
    void setHitsEndAtHost(bool host);
    [[nodiscard]] std::string picture() const;

    /// Updates everything that follows from processes, icons, displays and the allowlist.
    void refresh();

    [[nodiscard]] const SimulatedMenuBar& menuBar() const noexcept { return menuBar_; }
    [[nodiscard]] const VisibleIcons& visible() const noexcept { return visible_; }
    [[nodiscard]] SimulatedBroom& broom() noexcept { return broom_; }

 private:
    [[nodiscard]] SimulatedMenuBar::Room room();

    SimulatedMac& mac_;
    MachineThread& thread_;
    SimulatedMenuBar menuBar_;
    VisibleIcons visible_{menuBar_};
    SimulatedTrees trees_;
    SimulatedBroom broom_;
    bool hitsEndAtHost_ = true;
    SimulatedMenuBar::Room room_;  ///< in the bar of the last primary screen that there was
};

}  // namespace velko
