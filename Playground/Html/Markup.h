#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velko::html {

/// A text as markup, also for attributes. Characters that have a meaning in markup become entities. Control
/// characters and bytes that are not UTF-8 become U+FFFD.
[[nodiscard]] std::string escaped(std::string_view text);

/// An attribute of an element. Writing it escapes its value.
struct Attribute {
    std::string_view name;
    std::string value{};
    bool isThere = true;  ///< false: the attribute is left out

    /// An attribute without a value.
    [[nodiscard]] static Attribute flag(std::string_view name, bool isThere) {
        return {.name = name, .isThere = isThere};
    }
    /// An attribute that is left out if its value is empty.
    [[nodiscard]] static Attribute unlessEmpty(std::string_view name, std::string value) {
        const bool isThere = !value.empty();
        return {.name = name, .value = std::move(value), .isThere = isThere};
    }
};

using Attributes = std::vector<Attribute>;

/// An element with markup in it.
[[nodiscard]] std::string element(std::string_view name, const Attributes& attributes,
                                  std::string_view markup = {});

/// An element that never has content, so it has no end tag.
[[nodiscard]] std::string voidElement(std::string_view name, const Attributes& attributes);

/// An element with a text in it. The text is escaped.
[[nodiscard]] std::string textElement(std::string_view name, const Attributes& attributes,
                                      std::string_view text);

/// A length for a style: "12.5px".
[[nodiscard]] std::string pixels(double points);

}  // namespace velko::html
