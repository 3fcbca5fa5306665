#include "Velko/View/Tree.h"

#include <concepts>
#include <cstddef>

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

/// The functions are copied before they run: what they do may replace the tree that they stand in.
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

}  // namespace velko::view
