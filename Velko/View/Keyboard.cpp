#include "Velko/View/Keyboard.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "Velko/View/Tree.h"

namespace velko::view {

bool pressKey(const Node& root, const Shortcut& shortcut, bool isRepeat) {
    if (shortcut.key == Shortcut::Key::none) {
        return false;
    }
    const Node* found = nullptr;
    walk(root, [&](const Node& node) {
        const auto* button = std::get_if<Button>(&node.content);
        if (found == nullptr && button != nullptr && node.isEnabled && button->shortcut == shortcut) {
            found = &node;
        }
    });
    if (isRepeat) {
        return found != nullptr;
    }
    // The tree may be gone before the press is through, and its id with it.
    return found != nullptr && perform(root, std::string(found->id), std::monostate{});
}

namespace {

using Rows = std::vector<std::vector<std::string>>;

/// The ids of the tiles that can be pressed, row by row.
Rows rowsOfTiles(const Node& root) {
    Rows rows;
    walk(root, [&](const Node& node) {
        std::vector<std::string> row;
        for (const Node& child : childrenOf(node)) {
            if (std::holds_alternative<Tile>(child.content) && child.isEnabled) {
                row.push_back(child.id);
            }
        }
        if (!row.empty()) {
            rows.push_back(std::move(row));
        }
    });
    return rows;
}

std::optional<std::string> tileInRow(const Rows& rows, std::size_t row, std::size_t column) {
    return row < rows.size() ? std::optional(rows[row][std::min(column, rows[row].size() - 1)])
                             : std::nullopt;
}

}  // namespace

std::optional<std::string> tileBeside(const Node& root, std::string_view from, Arrow arrow) {
    const Rows rows = rowsOfTiles(root);
    constexpr auto beyond = std::numeric_limits<std::size_t>::max();  // of any row, of all rows
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const auto found = std::ranges::find(rows[row], from);
        if (found == rows[row].end()) {
            continue;
        }
        const auto column = static_cast<std::size_t>(found - rows[row].begin());
        const std::size_t above = row == 0 ? beyond : row - 1;
        switch (arrow) {
            case Arrow::left: return column > 0 ? rows[row][column - 1] : tileInRow(rows, above, beyond);
            case Arrow::right:
                return column + 1 < rows[row].size() ? rows[row][column + 1] : tileInRow(rows, row + 1, 0);
            case Arrow::up: return tileInRow(rows, above, column);
            case Arrow::down: return tileInRow(rows, row + 1, column);
        }
    }
    return tileInRow(rows, 0, 0);
}

}  // namespace velko::view
