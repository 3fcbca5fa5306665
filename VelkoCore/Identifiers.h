#pragma once

#include <cstdint>
#include <set>
#include <string>

namespace velko {

/// An app's bundle identifier: the key of every per-app table. Ordered by its bytes.
using BundleID = std::string;

using BundleIDs = std::set<BundleID>;

/// The system's number for a process. An app that has just ended may still be listed, with the number -1.
using ProcessID = std::int32_t;

[[nodiscard]] constexpr bool isReal(ProcessID pid) noexcept {
    return pid > 0;
}

}  // namespace velko
