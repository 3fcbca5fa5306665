#pragma once

#include <compare>
#include <string>
#include <string_view>

#include "VelkoCore/Search/FoldedText.h"

namespace velko {

/// A name as lists are sorted by it, the way a person expects: without case and accents ("Übersicht" among
/// the U), and numbers by their value ("app 2" before "app 10"). Names that are equal so are ordered by their
/// bytes. Pure value.
class NameOrder final {
 public:
    explicit NameOrder(std::string_view name) : name_(name), folded_(FoldedText::of(name)) {}

    [[nodiscard]] std::strong_ordering operator<=>(const NameOrder& other) const;
    bool operator==(const NameOrder& other) const { return name_ == other.name_; }

    /// Whether the letters of a text come one after another in the name.
    [[nodiscard]] bool contains(const FoldedText& text) const;

 private:
    std::string name_;
    FoldedText folded_;
};

}  // namespace velko
