#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// The one function of a fuzz target, called with each input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace velko::fuzz {

/// Ends the program if something that must hold for every input does not. The fuzzer counts that as a
/// finding.
inline void require(bool holds) noexcept {
    if (!holds) {
        std::abort();
    }
}

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) noexcept {
    return {reinterpret_cast<const char*>(data), size};
}

}  // namespace velko::fuzz
