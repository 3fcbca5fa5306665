#pragma once

#include "VelkoCore/Import/PropertyList.h"

namespace velko {

/// Foundation's reader of property lists. Any thread.
class MacPropertyListReader final : public PropertyListReader {
 public:
    [[nodiscard]] std::expected<PropertyList, PropertyListError> read(
        std::span<const std::byte> bytes) const override;
};

}  // namespace velko
