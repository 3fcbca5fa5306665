#pragma once

#include "Scenarios/Acts/Acts.h"

namespace velko::script {

/// A whole click on the broom, with the time that it takes; an open menu takes it.
[[nodiscard]] Done clickBroom(scenarios::World& world, const SimulatedClick& click);

/// A click on one of an app's icons, counted from 0; it is a click outside as well.
[[nodiscard]] Done clickIcon(scenarios::World& world, ProcessID pid, std::size_t icon);

/// A click on what is no icon; origin at the top left of the primary screen.
void clickAt(scenarios::World& world, Point location);

/// A click on the desktop closes an open menu, the note and the shelf.
void clickOutside(scenarios::World& world);

/// The escape key goes to an open menu, or else to the surface that has the keyboard.
void pressEscape(scenarios::World& world);

}  // namespace velko::script
