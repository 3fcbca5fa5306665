#pragma once

#include <cstddef>

namespace velko {

class AppController;

/// What Velko has made of the menu bar.
struct TidyOutcome {
    std::size_t tucked = 0;  ///< icons that are out of sight now, and that one click on the broom shows
    std::size_t buried = 0;  ///< icons that are out of sight now, and that such a click leaves there
    bool isAllKept = true;   ///< no app that is present is to be hidden at all
    bool isRefused = false;  ///< the system did not let Velko hide anything

    [[nodiscard]] static TidyOutcome of(const AppController& controller);
};

}  // namespace velko
