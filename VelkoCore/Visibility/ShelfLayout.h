#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

/// How the shelf's tiles are broken into rows.
namespace velko::ShelfLayout {

inline constexpr int columns = 8;

/// The items in rows of `columnCount`, in order; the last row holds what is left. With fewer than one column
/// there is one row of everything, even when there are no items.
template <class Item>
[[nodiscard]] std::vector<std::vector<Item>> rows(const std::vector<Item>& items, int columnCount = columns) {
    if (columnCount < 1) {
        return {items};
    }
    const auto step = static_cast<std::size_t>(columnCount);
    std::vector<std::vector<Item>> result;
    for (std::size_t start = 0; start < items.size(); start += step) {
        const auto end = std::min(items.size(), start + step);
        result.emplace_back(items.begin() + static_cast<std::ptrdiff_t>(start),
                            items.begin() + static_cast<std::ptrdiff_t>(end));
    }
    return result;
}

}  // namespace velko::ShelfLayout
