#include "Velko/View/Keyboard.h"

#include <string>
#include <variant>

#include "Velko/View/Tree.h"

namespace velko::view {

bool pressKey(const Node& root, const Shortcut& shortcut) {
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
    // The tree may be gone before the press is through, and its id with it.
    return found != nullptr && perform(root, std::string(found->id), std::monostate{});
}

}  // namespace velko::view
