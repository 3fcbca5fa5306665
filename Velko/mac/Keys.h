#pragma once

#import <AppKit/AppKit.h>
#include <optional>

#include "Velko/View/Keyboard.h"
#include "Velko/View/Node.h"

namespace velko {

/// The key that went down, as a button may listen to it; nothing when none can.
[[nodiscard]] std::optional<view::Shortcut> shortcutOf(NSEvent* event);

/// The arrow key that went down, without Command, Control and Option.
[[nodiscard]] std::optional<view::Arrow> arrowOf(NSEvent* event);

/// Whether a control that has the keyboard may have use for the key itself.
[[nodiscard]] bool isForControls(const view::Shortcut& shortcut);

}  // namespace velko
