#pragma once

#include <expected>
#include <string>

#include "Simulator/Machine/SimulatedMac.h"

// How far the time of a simulated Mac goes. Beyond it, the arithmetic of the machine that it runs on ends.

namespace velko::script {

/// Whether the wall clock can go that much further, or back; otherwise one line that says why not.
[[nodiscard]] std::expected<void, std::string> clockCanMove(const SimulatedMac& mac, MainThread::Uptime by);

/// The same of time that passes.
[[nodiscard]] std::expected<void, std::string> timeCanPass(const SimulatedMac& mac,
                                                           MainThread::Uptime duration);

}  // namespace velko::script
