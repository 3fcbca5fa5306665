#pragma once

#include <string>
#include <string_view>

namespace velko {

/// The text with every byte that is not part of well-formed UTF-8 replaced by U+FFFD.
[[nodiscard]] std::string repairedUtf8(std::string_view text);

/// Makes a text from outside safe for a terminal: control characters become U+FFFD, but for those in `kept`,
/// which are of ASCII.
[[nodiscard]] std::string printable(std::string_view text, std::string_view kept = {});

/// A name within a sentence of ours. If it is written from right to left, it is marked so that it does not
/// change the order of the words around it.
[[nodiscard]] std::string isolated(std::string_view name);

}  // namespace velko
