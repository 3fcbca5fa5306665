#pragma once

#include "Scenarios/Acts/Acts.h"

// What a person does with what Velko shows, with the mouse.

namespace velko::script {

/// The surface that the step names.
[[nodiscard]] SimulatedSurface& surfaceOf(const Step& step, scenarios::World& world);

/// Picks from the broom's open menu, by title.
[[nodiscard]] Done choose(const Step& step, scenarios::World& world);
/// Picks from the menu of a control or a tile.
[[nodiscard]] Done chooseIn(const Step& step, scenarios::World& world);
/// Opens that menu, and leaves it open.
[[nodiscard]] Done openMenuIn(const Step& step, scenarios::World& world);
/// Works a control: a button without a value, the others with one.
[[nodiscard]] Done press(const Step& step, scenarios::World& world);
/// Picks up an app's tile, and holds it.
[[nodiscard]] Done drag(const Step& step, scenarios::World& world);
/// Drags an app's tile onto a group of the same surface.
[[nodiscard]] Done drop(const Step& step, scenarios::World& world);
/// A window's close button; Escape for what has none.
[[nodiscard]] Done close(const Step& step, scenarios::World& world);
/// A key that means nothing to what stands there.
[[nodiscard]] Done pressKey(const Step& step, scenarios::World& world);

}  // namespace velko::script
