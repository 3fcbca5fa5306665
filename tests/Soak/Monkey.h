#pragma once

#include <cstddef>
#include <functional>
#include <optional>

#include "Scenarios/Language/Step.h"
#include "Scenarios/World.h"

namespace velko::soak {

/// A random number from 0 up to the bound, without the bound.
using Below = std::function<std::size_t(std::size_t)>;

/// Something that a playful user might do next with what Velko shows: with a menu, with any control of an
/// open surface, or with the pointer. It is always possible. Nothing if chance has chosen something that does
/// not show.
[[nodiscard]] std::optional<script::Step> playfulStep(scenarios::World& world, const Below& below);

}  // namespace velko::soak
