#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include "VelkoCore/Import/PropertyList.h"

namespace velko {

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
