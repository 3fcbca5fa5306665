#pragma once

#include <vector>

#include "Velko/Apps/PresentApps.h"

namespace velko {

class AppController;

/// The apps in the menu bar whose section keeps them out of sight, each once, as they stand from left to
/// right. Neither Velko nor the system's own items are among them.
struct HiddenApps {
    std::vector<PresentApp> tucked;
    std::vector<PresentApp> buried;

    [[nodiscard]] bool areNone() const noexcept { return tucked.empty() && buried.empty(); }
};

[[nodiscard]] HiddenApps hiddenApps(const AppController& controller);

}  // namespace velko
