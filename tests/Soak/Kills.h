#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace velko::soak {

/// Lets random things happen to Velko, kills it at a random moment, perhaps in the middle of a save, and
/// looks at what is left: all icons must show, the layout must be one that was saved, and Velko must start
/// again. Says what is wrong; nothing if all is well.
[[nodiscard]] std::optional<std::string> breachAfterKill(std::uint64_t seed);

/// The same with a process of its own, which the system kills after a random time. The simulated Mac dies
/// with that process, so it looks only at the folder, and starts Velko there. Not while other threads run.
[[nodiscard]] std::optional<std::string> breachAfterRealKill(std::uint64_t seed);

}  // namespace velko::soak
