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

/// Functions are copied before they run, because they may replace the tree that holds them.
struct Performer {
    const Input& input;

    template <class Value, class Function, class... Arguments>
    [[nodiscard]] static bool call(const Value* value, const Function& function,
                                   const Arguments&... arguments) {
        if (value == nullptr || !function) {
            return false;
        }
        const Function copy = function;
        copy(arguments...);
        return true;
    }

    [[nodiscard]] bool press(const std::function<void()>& function) const {
        return call(std::get_if<std::monostate>(&input), function);
    }
    [[nodiscard]] bool pick(const std::function<void(std::size_t)>& function, std::size_t count) const {
        const auto* number = std::get_if<std::int64_t>(&input);
        if (number == nullptr || *number < 0 || static_cast<std::uint64_t>(*number) >= count) {
            return false;
        }
        return call(number, function, static_cast<std::size_t>(*number));
    }

    [[nodiscard]] bool operator()(const Button& button) const { return press(button.press); }
    [[nodiscard]] bool operator()(const Tile& tile) const { return press(tile.press); }
    [[nodiscard]] bool operator()(const Toggle& toggle) const {
        const auto* isOn = std::get_if<bool>(&input);
        return isOn != nullptr && call(isOn, toggle.change, *isOn);
    }
    [[nodiscard]] bool operator()(const Picker& picker) const {
        return pick(picker.choose, picker.options.size());
    }
    [[nodiscard]] bool operator()(const Pages& pages) const { return pick(pages.choose, pages.tabs.size()); }
    [[nodiscard]] bool operator()(const Group& group) const {
        const auto* dropped = std::get_if<BundleID>(&input);
        return dropped != nullptr && call(dropped, group.drop, BundleID(*dropped));
    }
    [[nodiscard]] bool operator()(const auto&) const { return false; }
};

[[nodiscard]] std::string visibleText(const Text& text) {
    return text.text;
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

bool isControl(const Node& node) {
    return std::holds_alternative<Button>(node.content) || std::holds_alternative<Toggle>(node.content) ||
           std::holds_alternative<Picker>(node.content) || std::holds_alternative<MenuButton>(node.content) ||
           std::holds_alternative<Tile>(node.content) || std::holds_alternative<Pages>(node.content);
}

bool perform(const Node& root, std::string_view id, const Input& input) {
    const Node* node = find(root, id);
    return node != nullptr && node->isEnabled && std::visit(Performer{input}, node->content);
}

Menu menuOf(const Node& root, std::string_view id) {
    const Node* node = find(root, id);
    if (node == nullptr || !node->isEnabled) {
        return {};
    }
    if (const auto* button = std::get_if<MenuButton>(&node->content)) {
        return button->menu ? button->menu() : Menu{};
    }
    const auto* tile = std::get_if<Tile>(&node->content);
    return tile != nullptr && tile->menu ? tile->menu() : Menu{};
}

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
    // The press may destroy the tree, and the id in it.
    return found != nullptr && perform(root, std::string(found->id), std::monostate{});
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
