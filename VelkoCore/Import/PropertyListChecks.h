#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include "VelkoCore/Import/PropertyList.h"

namespace velko {

/// Counts what a property list costs while it is walked, against `PropertyListLimits`. For the checks
/// and for readers that turn a library's values into ours.
class PropertyListBudget {
 public:
    /// Counts values or keys; an error once there are too many.
    [[nodiscard]] std::optional<PropertyListError> addNodes(std::size_t count) noexcept;

    /// Counts bytes of text or data; an error once there are too many.
    [[nodiscard]] std::optional<PropertyListError> addPayload(std::size_t bytes) noexcept;

    /// An error if no value may stand at `depth`; the outermost one stands at 1.
    [[nodiscard]] static std::optional<PropertyListError> checkDepth(std::size_t depth) noexcept;

    /// Counts a value that stands at `depth`, with everything in it.
    [[nodiscard]] std::optional<PropertyListError> add(const PropertyList& list, std::size_t depth);

 private:
    std::size_t nodes_ = 0;
    std::size_t payload_ = 0;
};

// What a file must be before a library sees it. Both checks are stricter than the formats, take time and
// memory in proportion to the bytes, and say nothing about what the values mean.

/// Whether the bytes are a binary property list whose tables, references and lengths stay inside the
/// file, which holds no cycle, and which stays within `PropertyListLimits` when every shared object is
/// written out. Nothing if so.
[[nodiscard]] std::optional<PropertyListError> checkBinaryPropertyList(std::span<const std::byte> bytes);

/// Whether the text is an XML property list with matching tags, within `PropertyListLimits`, without
/// attributes inside and without declarations of its own, so that no entity can grow. Nothing if so.
[[nodiscard]] std::optional<PropertyListError> checkXmlPropertyList(std::string_view text);

}  // namespace velko
