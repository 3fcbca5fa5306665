#pragma once

#include <string>

namespace velko {

/// A number with so many decimals, rounded, with a point in every locale and never with an exponent: "1.0".
[[nodiscard]] std::string fixedText(double number, int decimals);

/// The shortest decimal text that reads back as the same number, never with an exponent: "1", "0.25".
[[nodiscard]] std::string decimalText(double number);

/// The number as whole decimal text, truncated towards zero: "-3" for -3.9. Any finite number will do.
[[nodiscard]] std::string wholeText(double number);

}  // namespace velko
