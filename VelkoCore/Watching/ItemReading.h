#pragma once

#include <string>

namespace velko {

/// What one menu-bar item looked like at a moment; compared over time to notice changes.
struct ItemReading {
    std::string text;  ///< title, description, help and value, joined with "|"
    double width = 0;  ///< in points; 0 when unknown

    bool operator==(const ItemReading&) const = default;
};

}  // namespace velko
