#pragma once

#include <cstddef>
#include <functional>
#include <optional>

#include "Scenarios/Language/Step.h"
#include "Scenarios/World.h"

namespace velko::soak {

/// A number from 0 to below the bound.
using Below = std::function<std::size_t(std::size_t)>;

/// Something that a playful user might do next with what Velko shows: a menu, any control of an open surface,
/// the pointer. It is always possible. Nothing where chance has picked what does not show.
[[nodiscard]] std::optional<script::Step> playfulStep(scenarios::World& world, const Below& below);

}  // namespace velko::soak
