#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "Velko/View/Node.h"
#include "VelkoCore/Identifiers.h"

/// What every renderer, and everyone who reads a tree, does with it. Pure functions.
namespace velko::view {

/// A node's children; none for what holds none.
[[nodiscard]] std::span<const Node> childrenOf(const Node& node);

/// The node with that id, at or below `root`; null when there is none.
[[nodiscard]] const Node* find(const Node& root, std::string_view id);

/// Calls `visit` for `root` and everything below it, in reading order.
void walk(const Node& root, const std::function<void(const Node&)>& visit);

/// What VoiceOver says of a node: its label, else its visible text; empty for decoration.
[[nodiscard]] std::string spoken(const Node& node);

/// Whether the keyboard stops at a node.
[[nodiscard]] bool isControl(const Node& node);

/// What a user does to a control: presses it, switches it, picks a number or a place, drops an app on it.
using Input = std::variant<std::monostate, bool, std::int64_t, BundleID>;

/// Does what the user did to the control with that id. Whether it is there, enabled, and takes such an
/// input; a number out of its range is none.
bool perform(const Node& root, std::string_view id, const Input& input);

/// The menu that a control opens; empty when it has none or is disabled.
[[nodiscard]] Menu menuOf(const Node& root, std::string_view id);

}  // namespace velko::view
