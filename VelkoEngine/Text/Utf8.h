#pragma once

#include <string>
#include <string_view>

namespace velko {

/// The text with every byte that is not part of well-formed UTF-8 replaced by U+FFFD.
[[nodiscard]] std::string repairedUtf8(std::string_view text);

}  // namespace velko
