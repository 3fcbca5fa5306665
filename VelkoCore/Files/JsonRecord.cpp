#include "VelkoCore/Files/JsonRecord.h"

#include <array>
#include <cmath>
#include <limits>

namespace velko {

namespace {

constexpr std::size_t longestQuote = 80;

/// Outside text as part of a message: short, and on one line.
std::string quotable(std::string_view text) {
    std::string result{text.substr(0, longestQuote)};
    if (text.size() > longestQuote) {
        while (!result.empty() && (static_cast<unsigned char>(result.back()) & 0xC0U) == 0x80U) {
            result.pop_back();
        }
        if (!result.empty() && static_cast<unsigned char>(result.back()) >= 0xC0U) {
            result.pop_back();
        }
        result += "…";
    }
    for (char& character : result) {
        if (static_cast<unsigned char>(character) < 0x20U || character == '\x7F') {
            character = '?';
        }
    }
    return result;
}

std::string_view kindOf(const Json& json) {
    constexpr std::array<std::string_view, 8> kinds{"null",     "true or false", "a number", "a number",
                                                    "a number", "a text",        "a list",   "an object"};
    static_assert(kinds.size() == std::variant_size_v<Json::Value>);
    return kinds.at(json.value.index());
}

std::unexpected<JsonMismatch> problem(std::string text) {
    return std::unexpected(JsonMismatch{.path = {}, .problem = std::move(text)});
}

/// Reads a text that `parse` understands; `expected` says what it must look like.
template <class T, class Parse>
JsonRead readText(const Json& json, T& member, std::string_view expected, Parse parse) {
    const auto* text = std::get_if<std::string>(&json.value);
    if (text == nullptr) {
        return mismatch(expected, json);
    }
    const std::optional<T> value = parse(*text);
    if (!value) {
        return problem("expected " + std::string{expected} + ", found \"" + quotable(*text) + "\"");
    }
    member = *value;
    return {};
}

JsonRead readReal(double real, std::int64_t& member) {
    // Above this, several whole numbers have the same real, so it is not known which one was meant.
    constexpr double exact = 1LL << std::numeric_limits<double>::digits;
    if (std::abs(real) > exact) {
        return problem("the number is out of range");
    }
    if (real != std::trunc(real)) {
        return problem("expected a whole number, found a fraction");
    }
    member = static_cast<std::int64_t>(real);
    return {};
}

}  // namespace

JsonMismatch JsonMismatch::inside(std::string_view key) && {
    const std::string_view separator = path.empty() || path.front() == '[' ? "" : ".";
    return {.path = quotable(key) + std::string{separator} + path, .problem = std::move(problem)};
}

JsonMismatch JsonMismatch::inside(std::size_t index) && {
    const std::string_view separator = path.empty() || path.front() == '[' ? "" : ".";
    return {.path = "[" + std::to_string(index) + "]" + std::string{separator} + path,
            .problem = std::move(problem)};
}

DecodingError describe(JsonMismatch mismatch) {
    if (mismatch.path.empty()) {
        return {std::move(mismatch.problem)};
    }
    return {mismatch.path + ": " + mismatch.problem};
}

std::unexpected<JsonMismatch> mismatch(std::string_view expected, const Json& found) {
    return problem("expected " + std::string{expected} + ", found " + std::string{kindOf(found)});
}

JsonRead readJson(const Json& json, bool& member) {
    const bool* value = std::get_if<bool>(&json.value);
    if (value == nullptr) {
        return mismatch("true or false", json);
    }
    member = *value;
    return {};
}

JsonRead readJson(const Json& json, std::int64_t& member) {
    if (const auto* number = std::get_if<std::int64_t>(&json.value)) {
        member = *number;
        return {};
    }
    if (const auto* number = std::get_if<std::uint64_t>(&json.value)) {
        if (!std::in_range<std::int64_t>(*number)) {
            return problem("the number is out of range");
        }
        member = static_cast<std::int64_t>(*number);
        return {};
    }
    if (const auto* real = std::get_if<double>(&json.value)) {
        return readReal(*real, member);
    }
    return mismatch("a whole number", json);
}

JsonRead readJson(const Json& json, std::string& member) {
    const auto* text = std::get_if<std::string>(&json.value);
    if (text == nullptr) {
        return mismatch("a text", json);
    }
    member = *text;
    return {};
}

JsonRead readJson(const Json& json, Section& member) {
    return readText(json, member, R"("bar", "tucked" or "buried")", sectionNamed);
}

JsonRead readJson(const Json& json, RevealStyle& member) {
    return readText(json, member, R"("inline" or "shelf")", revealStyleNamed);
}

JsonRead readJson(const Json& json, Date& member) {
    return readText(json, member, "a date such as 2026-03-01T09:30:00Z", parseDate);
}

JsonRead readJson(const Json& json, Json& member) {
    member = json;
    return {};
}

Json writeJson(bool member) {
    return {member};
}

Json writeJson(std::int64_t member) {
    return {member};
}

Json writeJson(const std::string& member) {
    return {member};
}

Json writeJson(Section member) {
    return {std::string{name(member)}};
}

Json writeJson(RevealStyle member) {
    return {std::string{name(member)}};
}

Json writeJson(Date member) {
    return {formatDate(member)};
}

Json writeJson(const Json& member) {
    return member;
}

}  // namespace velko
