#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>

#include "Velko/View/Tree.h"

namespace velko::view {

namespace {

/// Functions are copied before they run, because they may replace the tree that holds them.
struct Performer {
    const Node& root;
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
    [[nodiscard]] bool operator()(const Tile& tile) const {
        const auto* pressed = std::get_if<MenuKey>(&input);
        return pressed != nullptr ? pressMenuKey(tile, pressed->key) : press(tile.press);
    }
    [[nodiscard]] bool operator()(const KeyRecorder& recorder) const {
        const auto* keys = std::get_if<KeyCombination>(&input);
        const bool isRecorded = keys != nullptr && recorder.isRecording;
        return isRecorded ? call(keys, recorder.record, KeyCombination(*keys)) : press(recorder.press);
    }
    [[nodiscard]] bool operator()(const Toggle& toggle) const {
        const auto* isOn = std::get_if<bool>(&input);
        return isOn != nullptr && call(isOn, toggle.change, *isOn);
    }
    [[nodiscard]] bool operator()(const Picker& picker) const {
        return pick(picker.choose, picker.options.size());
    }
    [[nodiscard]] bool operator()(const Pages& pages) const { return pick(pages.choose, pages.tabs.size()); }
    [[nodiscard]] bool operator()(const Disclosure& disclosure) const {
        const auto* isOpen = std::get_if<bool>(&input);
        return isOpen != nullptr && call(isOpen, disclosure.change, *isOpen);
    }
    [[nodiscard]] bool operator()(const Group& group) const {
        const auto* dropped = std::get_if<BundleID>(&input);
        return dropped != nullptr && call(dropped, group.drop, BundleID(*dropped));
    }
    [[nodiscard]] bool operator()(const List& list) const {
        if (const auto* selected = std::get_if<Selected>(&input)) {
            return select(list, selected->rows);
        }
        const auto* activated = std::get_if<Activated>(&input);
        return activated != nullptr && canBeSelected(list, activated->row) &&
               call(activated, list.activate, std::string(activated->row));
    }
    [[nodiscard]] bool operator()(const SearchField& field) const {
        if (const auto* written = std::get_if<std::string>(&input)) {
            return call(written, field.change, std::string(*written));
        }
        const auto* pressed = std::get_if<KeyPress>(&input);
        return pressed != nullptr && press(field, *pressed);
    }
    [[nodiscard]] bool operator()(const auto&) const { return false; }

    [[nodiscard]] static bool pressMenuKey(const Tile& tile, char key) {
        const Menu menu = tile.menu ? tile.menu() : Menu();
        const auto item = std::ranges::find_if(
            menu, [&](const MenuItem& each) { return each.key == key && each.isEnabled && each.action; });
        return key != 0 && item != menu.end() && call(&key, item->action);
    }

    [[nodiscard]] static bool canBeSelected(const List& list, const std::string& row) {
        return std::ranges::any_of(list.children,
                                   [&](const Node& child) { return child.id == row && child.isEnabled; });
    }
    [[nodiscard]] static bool select(const List& list, const RowIDs& rows) {
        const bool isTooMuch = list.selection == List::Selection::one && rows.size() > 1;
        const bool isThere =
            std::ranges::all_of(rows, [&](const std::string& row) { return canBeSelected(list, row); });
        return !isTooMuch && isThere && call(&rows, list.select, RowIDs(rows));
    }

    [[nodiscard]] bool press(const SearchField& field, const KeyPress& pressed) const {
        if (const auto own = field.key; own && own(pressed)) {
            return true;
        }
        if (!pressed.isPlain()) {
            return false;
        }
        if (pressed.key == KeyPress::Key::escape) {
            return !field.text.empty() && call(&pressed, field.change, std::string());
        }
        const Node* driven = field.drives.empty() ? nullptr : find(root, field.drives);
        const auto* list = driven == nullptr ? nullptr : std::get_if<List>(&driven->content);
        return list != nullptr && driven->isEnabled && drive(*list, pressed);
    }
    [[nodiscard]] static bool drive(const List& list, const KeyPress& pressed) {
        if (pressed.key == KeyPress::Key::digit) {
            return false;
        }
        if (pressed.key != KeyPress::Key::enter) {
            const std::string row = rowBeside(list, pressed.key == KeyPress::Key::down);
            return !row.empty() && select(list, {row});
        }
        return list.selected.size() == 1 && canBeSelected(list, *list.selected.begin()) &&
               call(&pressed, list.activate, std::string(*list.selected.begin()));
    }
};

}  // namespace

bool perform(const Node& root, std::string_view id, const Input& input) {
    const Node* node = find(root, id);
    return node != nullptr && node->isEnabled && std::visit(Performer{root, input}, node->content);
}

bool pressKey(const Node& root, const Shortcut& shortcut, bool isRepeat) {
    if (shortcut.key == Shortcut::Key::none) {
        return false;
    }
    const Node* found = nullptr;
    walk(root, [&](const Node& node) {
        const auto* button = std::get_if<Button>(&node.content);
        const bool listens =
            button != nullptr && (button->shortcut == shortcut || button->alternative == shortcut);
        if (found == nullptr && listens && node.isEnabled) {
            found = &node;
        }
    });
    if (isRepeat) {
        return found != nullptr;
    }
    // The press may destroy the tree, and the id in it.
    return found != nullptr && perform(root, std::string(found->id), std::monostate{});
}

}  // namespace velko::view
