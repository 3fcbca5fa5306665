#pragma once

#include <string>
#include <string_view>

namespace velko::playground {

/// A line from outside as a terminal may get it: what would work the terminal becomes U+FFFD.
[[nodiscard]] std::string printable(std::string_view line);

}  // namespace velko::playground
