#include "Velko/View/Tree.h"

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <limits>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "Velko/View/Menu.h"

namespace velko::view {

namespace {

template <class Content>
concept Container = requires(const Content& content) {
    { content.children } -> std::convertible_to<const std::vector<Node>&>;
};

template <class Content>
concept Titled = requires(const Content& content) {
    { content.title } -> std::convertible_to<std::string>;
};

[[nodiscard]] std::string visibleText(const Text& text) {
    return text.text;
}
[[nodiscard]] std::string visibleText(const SearchField& field) {
    return field.placeholder;
}
[[nodiscard]] std::string visibleText(const Tile& tile) {
    return tile.badge.empty() ? tile.name : tile.name + ", " + tile.badge;
}
[[nodiscard]] std::string visibleText(const auto& content) {
    if constexpr (Titled<std::remove_cvref_t<decltype(content)>>) {
        return content.title;
    } else {
        return {};
    }
}

}  // namespace

std::span<const Node> childrenOf(const Node& node) {
    const auto* disclosure = std::get_if<Disclosure>(&node.content);
    if (disclosure != nullptr && !disclosure->isOpen) {
        return {};
    }
    return std::visit(
        [](const auto& content) -> std::span<const Node> {
            if constexpr (Container<std::remove_cvref_t<decltype(content)>>) {
                return content.children;
            } else {
                return {};
            }
        },
        node.content);
}

const Node* find(const Node& root, std::string_view id) {
    if (root.id == id) {
        return &root;
    }
    for (const Node& child : childrenOf(root)) {
        if (const Node* found = find(child, id)) {
            return found;
        }
    }
    return nullptr;
}

void walk(const Node& root, const std::function<void(const Node&)>& visit) {
    visit(root);
    for (const Node& child : childrenOf(root)) {
        walk(child, visit);
    }
}

std::string spoken(const Node& node) {
    if (!node.label.empty()) {
        return node.label;
    }
    return std::visit([](const auto& content) { return visibleText(content); }, node.content);
}

namespace {

template <class Content, class... Kinds>
bool isOneOf(const Content& content) {
    return (std::holds_alternative<Kinds>(content) || ...);
}

}  // namespace

bool isControl(const Node& node) {
    return isOneOf<Content, Button, SearchField, KeyRecorder, Toggle, Picker, MenuButton, Tile, List,
                   Disclosure, Pages>(node.content);
}

std::string rowBeside(const List& list, bool isAfter) {
    std::vector<const Node*> rows;
    for (const Node& row : list.children) {
        if (row.isEnabled) {
            rows.push_back(&row);
        }
    }
    if (rows.empty()) {
        return {};
    }
    if (!isAfter) {
        std::ranges::reverse(rows);
    }
    // The last selected row in that direction counts.
    const auto last = std::ranges::find_if(rows.rbegin(), rows.rend(),
                                           [&](const Node* row) { return list.selected.contains(row->id); });
    if (last == rows.rend()) {
        return rows.front()->id;
    }
    return last == rows.rbegin() ? rows.back()->id : (*std::prev(last))->id;
}

std::optional<std::string> recorderIn(const Node& root) {
    std::optional<std::string> found;
    walk(root, [&](const Node& node) {
        const auto* recorder = std::get_if<KeyRecorder>(&node.content);
        if (recorder != nullptr && recorder->isRecording && node.isEnabled) {
            found = node.id;
        }
    });
    return found;
}

std::optional<std::string> fieldIn(const Node& root, bool orAny) {
    std::optional<std::string> first;
    std::optional<std::string> usable;
    walk(root, [&](const Node& node) {
        const auto* field = std::get_if<SearchField>(&node.content);
        if (field == nullptr || !node.isEnabled) {
            return;
        }
        usable = usable ? usable : node.id;
        first = field->hasFocus ? node.id : first;
    });
    return first || !orAny ? first : usable;
}

const Node* toolbarOf(const Node& root) {
    const Node* found = nullptr;
    walk(root, [&](const Node& node) {
        const auto* pages = std::get_if<Pages>(&node.content);
        found = found == nullptr && pages != nullptr && pages->style == Pages::Style::toolbar ? &node : found;
    });
    return found;
}

std::string pageTitle(const Node& root) {
    const Node* node = toolbarOf(root);
    const auto* pages = node == nullptr ? nullptr : std::get_if<Pages>(&node->content);
    return pages != nullptr && pages->selected < pages->tabs.size() ? pages->tabs[pages->selected].title : "";
}

Menu menuOf(const Node& root, std::string_view id, const std::string& row) {
    const Node* node = find(root, id);
    if (node == nullptr || !node->isEnabled) {
        return {};
    }
    if (const auto* list = std::get_if<List>(&node->content)) {
        const bool isSelection = row.empty() || list->selected.contains(row);
        return list->menu ? list->menu(isSelection ? list->selected : RowIDs{row}) : Menu{};
    }
    if (const auto* button = std::get_if<MenuButton>(&node->content)) {
        return button->menu ? button->menu() : Menu{};
    }
    const auto* tile = std::get_if<Tile>(&node->content);
    return tile != nullptr && tile->menu ? tile->menu() : Menu{};
}

namespace {

using Rows = std::vector<std::vector<std::string>>;

/// The ids of the tiles that the user can press, row by row.
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
    constexpr auto beyond = std::numeric_limits<std::size_t>::max();  // an index that no row and no tile has
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
