#include "VelkoCore/NumberText.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string_view>

// The C library is part of the system. What the C++ library has for this would be a twentieth of the app:
// tables of powers of ten.

namespace velko {

namespace {

std::string printed(const char* format, int decimals, double number) {
    std::array<char, 1500> text{};  // The smallest number has 1,074 decimals, the largest 309 digits.
    const int length = std::snprintf(text.data(), text.size(), format, decimals, number);
    return {text.data(), static_cast<std::size_t>(length)};
}

}  // namespace

std::string fixedText(double number, int decimals) {
    std::string text = printed("%.*f", decimals, number);
    constexpr std::string_view digits = "-0123456789";
    // The point may be another character, or several.
    if (const auto point = text.find_first_not_of(digits); decimals > 0 && point != std::string::npos) {
        text.replace(point, text.size() - static_cast<std::size_t>(decimals) - point, ".");
    }
    return text;
}

std::string decimalText(double number) {
    if (!std::isfinite(number) || std::trunc(number) == number) {
        return fixedText(number, 0);
    }
    constexpr int mostDigits = std::numeric_limits<double>::max_digits10;
    int digits = 1;
    std::string text = printed("%.*e", 0, number);
    while (digits < mostDigits && std::strtod(text.c_str(), nullptr) != number) {
        text = printed("%.*e", digits, number);
        ++digits;
    }
    const int exponent = std::atoi(text.c_str() + text.rfind('e') + 1);
    return fixedText(number, digits - 1 - exponent);
}

std::string wholeText(double number) {
    // Adding zero turns a negative zero into a plain one.
    return fixedText(std::trunc(number) + 0.0, 0);
}

}  // namespace velko
