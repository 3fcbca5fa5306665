#pragma once

#include <expected>
#include <string>

#include "Scenarios/Language/Step.h"
#include "Scenarios/World.h"

namespace velko::script {

/// Lets one step happen, in virtual time. A step that can't happen (an app that does not run is to quit) or
/// an expectation that does not hold gives one line that says why; nothing has happened then.
std::expected<void, std::string> perform(const Step& step, scenarios::World& world);

}  // namespace velko::script
