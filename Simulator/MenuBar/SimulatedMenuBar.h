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
/// These are assumptions about a real bar. A new icon goes to the left of all others, unless the system
/// remembers a place for it. A hidden icon keeps its place in the order, so that it comes back where it was.
/// Until then its element answers with its last position and its present size. Icons that have no room in the
/// bar are not drawn, and nobody can click on them: their elements lie under the camera housing, or nowhere.
/// The broom and the system's items always have room.
class SimulatedMenuBar final {
 public:
    struct Slot {
        ProcessID pid = 0;
        BundleID bundleID;
        std::string appName;
        SimulatedIcon icon;
        bool isVisible = true;        ///< the system lets it show
        bool isSwallowed = false;     ///< but it has no room
        Rect frame;                   ///< origin at the top left of the primary screen
        SimulatedElementRef element;  ///< in its app's tree

        /// Whether a person sees it.
        [[nodiscard]] bool shows() const noexcept { return isVisible && !isSwallowed; }
    };

    /// The element of the new icon. `place`: its index among the slots; left out, it comes last.
    SimulatedElementRef add(const SimulatedProcess& owner, SimulatedIcon icon,
                            std::optional<std::size_t> place = std::nullopt);
    /// Removes one of an app's icons, counted as the app added them. Returns whether there was such an icon.
    bool remove(ProcessID pid, std::size_t index);
    void removeAll(ProcessID pid);
    /// An app's icon, counted as the app added them; null when there is none.
    [[nodiscard]] Slot* find(ProcessID pid, std::size_t index);
    [[nodiscard]] const Slot* find(ProcessID pid, std::size_t index) const;

    /// The icon that shows at a point; null if there is none.
    [[nodiscard]] const Slot* under(Point point) const;

    /// The room for icons, and who is always in it.
    struct Room {
        double left = 0;  ///< icons would have to begin right of it
        double right = 0;
        double height = 0;
        Point elsewhere{.x = -1000};  ///< about where the elements of icons without room have their middle
        ProcessID broom = 0;
    };

    /// Decides which icons show under an allowlist, and places them from the right to the left.
    void layOut(const std::optional<SimulatedAllowlist>& allowlist, const Room& room);

    /// All icons, hidden ones too, right to left.
    [[nodiscard]] const std::vector<Slot>& slots() const noexcept { return slots_; }

    /// The bar as text. What does not fit into `columns` columns continues in rows above, unlike in a real
    /// bar.
    [[nodiscard]] std::string picture(PreciseDate clock, ProcessID broom, std::size_t columns) const;

 private:
    std::vector<Slot> slots_;
};

}  // namespace velko
