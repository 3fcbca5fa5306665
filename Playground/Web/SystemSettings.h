#pragma once

#include <cstddef>
#include <optional>

#include "Simulator/Machine/SimulatedMac.h"

namespace velko::web {

/// The system's settings on the simulated Mac, as far as Velko sends its user there: a window with the list
/// of the apps that may control the Mac.
class SystemSettings final {
 public:
    /// Opens the window when an address of the settings has been opened since the last look.
    void look(SimulatedMac& mac);
    void close(SimulatedMac& mac);
    [[nodiscard]] bool isOpen() const noexcept { return pid_.has_value(); }

 private:
    void open(SimulatedMac& mac);

    std::size_t addressesSeen_ = 0;
    std::optional<ProcessID> pid_;
};

}  // namespace velko::web
