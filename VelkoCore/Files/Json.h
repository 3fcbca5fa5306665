#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace velko {

/// Why a file could not be understood, in words that name the key, such as
/// "reveal.hover: expected true or false, found a number".
struct DecodingError {
    std::string description;

    bool operator==(const DecodingError&) const = default;
};

/// A JSON document as a tree of values.
struct Json {
    using Array = std::vector<Json>;
    using Object = std::map<std::string, Json, std::less<>>;
    /// A whole number that was read from a text is signed if it is negative, else unsigned.
    using Value =
        std::variant<std::nullptr_t, bool, std::int64_t, std::uint64_t, double, std::string, Array, Object>;

    static constexpr std::size_t deepest = 64;            ///< arrays and objects within each other
    static constexpr std::size_t longest = 16U << 20U;    ///< bytes of a text to parse
    static constexpr std::size_t mostValues = 1'000'000;  ///< keeps hostile texts from filling memory

    Value value = nullptr;

    bool operator==(const Json&) const = default;

    [[nodiscard]] bool isNull() const noexcept { return std::holds_alternative<std::nullptr_t>(value); }

    /// Reads a whole text strictly and within the bounds above; the error says where it went wrong. The
    /// last of several equal keys of an object holds.
    [[nodiscard]] static std::expected<Json, DecodingError> parse(std::string_view text);

    /// Writes the value with two spaces of indentation, sorted keys and a final line feed. Bytes that are
    /// not UTF-8 are replaced by U+FFFD.
    [[nodiscard]] std::string print() const;

    /// The same on one line, which the final line feed ends.
    [[nodiscard]] std::string printLine() const;
};

}  // namespace velko
