#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velko::html {

/// A text as it stands in a page, in an attribute too: every character that could end it is written as an
/// entity, control characters and bytes that are not UTF-8 are replaced.
[[nodiscard]] std::string escaped(std::string_view text);

/// An attribute of an element. Its value is escaped when it is written.
struct Attribute {
    std::string_view name;
    std::string value{};
    bool isThere = true;  ///< false: the attribute is left out

    /// One without a value, that is there or not.
    [[nodiscard]] static Attribute flag(std::string_view name, bool isThere) {
        return {.name = name, .isThere = isThere};
    }
    /// One that is left out while its value is empty.
    [[nodiscard]] static Attribute unlessEmpty(std::string_view name, std::string value) {
        const bool isThere = !value.empty();
        return {.name = name, .value = std::move(value), .isThere = isThere};
    }
};

using Attributes = std::vector<Attribute>;

/// An element around markup that is ready.
[[nodiscard]] std::string element(std::string_view name, const Attributes& attributes,
                                  std::string_view markup = {});

/// An element that never has content.
[[nodiscard]] std::string voidElement(std::string_view name, const Attributes& attributes);

/// An element around a text, which is escaped.
[[nodiscard]] std::string textElement(std::string_view name, const Attributes& attributes,
                                      std::string_view text);

/// A length of so many points in a style.
[[nodiscard]] std::string pixels(double points);

}  // namespace velko::html
