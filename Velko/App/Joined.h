#pragma once

#include <string>

namespace velko {

/// Texts in their order, as the log lists them: "a, b, c".
template <class Texts>
[[nodiscard]] std::string joined(const Texts& texts) {
    std::string all;
    for (const std::string& text : texts) {
        all.append(all.empty() ? "" : ", ").append(text);
    }
    return all;
}

}  // namespace velko
