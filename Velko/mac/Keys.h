#pragma once

#import <AppKit/AppKit.h>
#include <optional>

#include "Velko/View/Node.h"
#include "Velko/View/Tree.h"
#import "Velko/mac/TreeViews.h"

namespace velko {

/// The pressed key as a shortcut; nothing when no button can listen to it.
[[nodiscard]] std::optional<view::Shortcut> shortcutOf(NSEvent* event);

/// The pressed key for a search field, with the modifier keys; nothing for keys that are for text.
[[nodiscard]] std::optional<view::KeyPress> keyPressOf(NSEvent* event);

/// The pressed key and what is held with it, whatever they mean.
[[nodiscard]] KeyCombination combinationOf(NSEvent* event);

/// The key that is down with Command alone, if menus of tiles may have it.
[[nodiscard]] std::optional<char> menuKeyOf(NSEvent* event);

/// The pressed arrow key; nothing for other keys, and with Command, Control or Option.
[[nodiscard]] std::optional<view::Arrow> arrowOf(NSEvent* event);

/// Whether a control that has the keyboard may need the key itself.
[[nodiscard]] bool isForControls(const view::Shortcut& shortcut);

/// Whether what has the keyboard uses arrows and letters itself.
[[nodiscard]] bool usesKeys(NSResponder* responder);

/// Whether what has the keyboard is a list that does something by Return.
[[nodiscard]] bool activatesByEnter(NSResponder* responder);

/// The field in which the user writes; nil when there is none.
[[nodiscard]] VLKSearchField* fieldOf(NSResponder* responder);

}  // namespace velko
