#pragma once

#include <cstdint>

namespace velko {

/// The system's number for a process. An app that has just ended may still be listed, with the number -1.
using ProcessID = std::int32_t;

[[nodiscard]] constexpr bool isReal(ProcessID pid) noexcept {
    return pid > 0;
}

}  // namespace velko
