#pragma once

#include <cstdint>

namespace velko {

/// The system's number for a process; positive for real ones.
using ProcessID = std::int32_t;

}  // namespace velko
