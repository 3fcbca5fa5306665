#pragma once

#include <expected>
#include <string>
#include <string_view>

#include "VelkoCore/Files/DecodingError.h"
#include "VelkoCore/Layout/Layout.h"

namespace velko {

/// Reads a layout from JSON. Missing keys take the defaults of older files; a value of the wrong type
/// fails, and the error names its key.
[[nodiscard]] std::expected<Layout, DecodingError> decodeLayout(std::string_view json);

/// Writes a layout as JSON: indented, keys sorted, dates as ISO 8601, ending in a line feed.
[[nodiscard]] std::string encodeLayout(const Layout& layout);

}  // namespace velko
