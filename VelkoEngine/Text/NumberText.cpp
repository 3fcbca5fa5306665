#include "VelkoEngine/Text/NumberText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>

namespace velko {

namespace {

/// Room for the smallest subnormal number, the longest there is.
constexpr std::size_t longestText = 400;

}  // namespace

std::string decimalText(double number) {
    std::array<char, longestText> text{};
    const auto result = std::to_chars(text.begin(), text.end(), number, std::chars_format::fixed);
    return {text.begin(), result.ptr};
}

std::string wholeText(double number) {
    // Adding zero turns a negative zero into a plain one.
    return decimalText(std::trunc(number) + 0.0);
}

}  // namespace velko
