#include "VelkoCore/Search/NameOrder.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace velko {

namespace {

bool isNumeral(char32_t letter) {
    return letter >= U'0' && letter <= U'9';
}

/// Takes the number at the start of a text, without zeros before it.
std::u32string_view takeNumber(std::u32string_view& text) {
    std::u32string_view number = text.substr(0, text.find_first_not_of(U"0123456789"));
    text.remove_prefix(number.size());
    number.remove_prefix(std::min(number.find_first_not_of(U'0'), number.size()));
    return number;
}

/// A number with more digits is greater, however long both are.
std::strong_ordering compareNumbers(std::u32string_view left, std::u32string_view right) {
    const auto bySize = left.size() <=> right.size();
    return bySize != std::strong_ordering::equal ? bySize : left <=> right;
}

std::strong_ordering compareLetters(std::u32string_view left, std::u32string_view right) {
    while (!left.empty() && !right.empty()) {
        if (isNumeral(left.front()) && isNumeral(right.front())) {
            const auto byNumber = compareNumbers(takeNumber(left), takeNumber(right));
            if (byNumber != std::strong_ordering::equal) {
                return byNumber;
            }
        } else if (left.front() != right.front()) {
            return left.front() <=> right.front();
        } else {
            left.remove_prefix(1);
            right.remove_prefix(1);
        }
    }
    return left.size() <=> right.size();
}

}  // namespace

std::strong_ordering NameOrder::operator<=>(const NameOrder& other) const {
    const auto byLetters = compareLetters(folded_.letters, other.folded_.letters);
    return byLetters != std::strong_ordering::equal ? byLetters : name_ <=> other.name_;
}

bool NameOrder::contains(const FoldedText& text) const {
    return folded_.letters.contains(text.letters);
}

}  // namespace velko
