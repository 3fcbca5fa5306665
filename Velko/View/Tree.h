#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "Velko/View/Node.h"
#include "VelkoCore/Identifiers.h"

/// What renderers do with a tree, and all others who read one. Pure functions.
namespace velko::view {

/// A node's children; none if its kind has none.
[[nodiscard]] std::span<const Node> childrenOf(const Node& node);

/// The node with that id, which may be `root` or below it; null when there is none.
[[nodiscard]] const Node* find(const Node& root, std::string_view id);

/// Calls `visit` for `root` and for everything below it, in reading order.
void walk(const Node& root, const std::function<void(const Node&)>& visit);

/// What VoiceOver says of a node: its label, or else its visible text; empty for decoration.
[[nodiscard]] std::string spoken(const Node& node);

/// Whether Tab stops at a node.
[[nodiscard]] bool isControl(const Node& node);

/// The user selects exactly these rows of a list.
struct Selected {
    RowIDs rows;
};

/// The user double-clicks a row of a list, or presses Return.
struct Activated {
    std::string row;
};

/// The user presses Command and a key that an item of the control's menu has.
struct MenuKey {
    char key = 0;
};

/// What a user does to a control: presses it, switches it on or off, opens or closes it, picks an option by
/// its index, writes a text, drops an app on it, works the rows of a list, presses a key in a field, or
/// presses the keys that are to be recorded.
using Input = std::variant<std::monostate, bool, std::int64_t, std::string, Selected, Activated, KeyPress,
                           KeyCombination, MenuKey>;

/// Does to the control with that id what the user did. Returns whether it exists, is enabled, and takes such
/// an input. An index outside its range is no input.
bool perform(const Node& root, std::string_view id, const Input& input);

/// The menu that a control opens; empty when it has none or is disabled. The menu of a list is about `row`,
/// or about all selected rows if that is one of them or empty.
[[nodiscard]] Menu menuOf(const Node& root, std::string_view id, const std::string& row = {});

/// The id of the control that records keys now; nothing if none does.
[[nodiscard]] std::optional<std::string> recorderIn(const Node& root);

/// The search field that gets the keyboard when the surface opens, or else, if `orAny`, the first one that
/// can be used; nothing if there is none.
[[nodiscard]] std::optional<std::string> fieldIn(const Node& root, bool orAny);

/// Presses the first enabled button, in reading order, that listens to that key. Returns whether there was
/// one. While a key is held down it presses only once: the repeats do nothing, but count as taken.
bool pressKey(const Node& root, const Shortcut& shortcut, bool isRepeat = false);

/// The row of a list that comes before or after the selected ones; the first or last one if none is selected
/// or nothing is beyond. Rows that can't be selected are left out. Empty if there are no others.
[[nodiscard]] std::string rowBeside(const List& list, bool isAfter);

/// The pages that the toolbar of a surface's window shows, and their node; null when there are none.
[[nodiscard]] const Node* toolbarOf(const Node& root);

/// The title of the page that the toolbar shows as selected; empty without a toolbar.
[[nodiscard]] std::string pageTitle(const Node& root);

enum class Arrow : std::uint8_t { left, right, up, down };

/// The tile to which an arrow key leads from the tile `from`: the next one in the row, beyond the row's end
/// the first of the next row, or the nearest tile in the row above or below. From anything else it leads to
/// the first tile. Nothing where no tile is in that direction.
[[nodiscard]] std::optional<std::string> tileBeside(const Node& root, std::string_view from, Arrow arrow);

}  // namespace velko::view
