#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Simulator/Accessibility/SimulatedElement.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "VelkoCore/Geometry.h"
#include "VelkoCore/Time/Date.h"

namespace velko {

/// The icons in the menu bar, which of them show, and where.
///
/// Assumed of a real bar: a new icon takes the place left of all others, unless the system remembers one for
/// it; an icon that is hidden keeps its place in that order, so that it comes back where it was, and
/// meanwhile its element answers with the position that it last had and with its current size; a bar that
/// is too short is not modelled.
class SimulatedMenuBar final {
 public:
    struct Slot {
        ProcessID pid = 0;
        BundleID bundleID;
        std::string appName;
        SimulatedIcon icon;
        bool isVisible = true;
        Rect frame;                   ///< origin at the top left of the primary screen
        SimulatedElementRef element;  ///< in its app's tree
    };

    /// The element of the new icon. `place`: its index among the slots; left out, it comes last.
    SimulatedElementRef add(const SimulatedProcess& owner, SimulatedIcon icon,
                            std::optional<std::size_t> place = std::nullopt);
    /// Takes out an app's icon, counted as the app added them; whether there was one.
    bool remove(ProcessID pid, std::size_t index);
    void removeAll(ProcessID pid);
    /// An app's icon, counted as the app added them; null when there is none.
    [[nodiscard]] Slot* find(ProcessID pid, std::size_t index);
    [[nodiscard]] const Slot* find(ProcessID pid, std::size_t index) const;

    /// The icon that shows at a point; null where none does.
    [[nodiscard]] const Slot* under(Point point) const;

    /// Decides which icons show under an allowlist, and where, from `rightEdge` leftwards.
    void layOut(const std::optional<SimulatedAllowlist>& allowlist, double rightEdge, double height);

    /// All icons, hidden ones too, right to left.
    [[nodiscard]] const std::vector<Slot>& slots() const noexcept { return slots_; }

    /// The bar as text. What does not fit into `columns` columns goes on in rows above, as no bar does.
    [[nodiscard]] std::string picture(PreciseDate clock, ProcessID broom, std::size_t columns) const;

 private:
    std::vector<Slot> slots_;
};

}  // namespace velko
