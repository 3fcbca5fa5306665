#pragma once

#include <cstddef>
#include <optional>

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

}  // namespace velko
