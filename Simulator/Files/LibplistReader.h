#pragma once

#include "VelkoCore/Import/PropertyList.h"

namespace velko {

/// Reads property lists on hosts without Foundation. Keeps nothing, may be used on any thread.
///
/// Dates that are 68 years or more from 2001 do not read right: the library keeps 32 bits of seconds.
class LibplistReader final : public PropertyListReader {
 public:
    [[nodiscard]] std::expected<PropertyList, PropertyListError> read(
        std::span<const std::byte> bytes) const override;
};

}  // namespace velko
