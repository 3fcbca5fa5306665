#pragma once

#include <string_view>

namespace velko::scenarios {

/// The scenario "a week with Velko", as kept in `week.scenario`.
[[nodiscard]] std::string_view weekScenario();

}  // namespace velko::scenarios
