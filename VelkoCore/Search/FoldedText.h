#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace velko {

/// A text as searches compare it: its letters and digits without case, accents and whatever is between them.
/// "Café-Über 2" and "cafeuber2" have the same letters. Pure value.
struct FoldedText {
    std::u32string letters;
    std::vector<std::size_t> wordStarts;  ///< indices into `letters`, ascending

    bool operator==(const FoldedText&) const = default;

    /// Words begin after what is no letter, at a capital as in "OneDrive", and where digits and letters meet.
    /// Bytes that are no UTF-8 separate words.
    [[nodiscard]] static FoldedText of(std::string_view text);
};

/// The text as a capital, if it is one letter that has a capital of one letter; else the text itself.
[[nodiscard]] std::string capital(std::string_view letter);

}  // namespace velko
