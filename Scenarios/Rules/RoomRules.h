#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Scenarios/World.h"
#include "VelkoEngine/Ports/Screen.h"

namespace velko::scenarios {

/// The rules about room in the menu bar, and about the display that the broom is on. One thread.
class RoomRules final {
 public:
    explicit RoomRules(World& world) : world_(world) {}

    /// To be called after each step. Returns the first rule that is broken, in one line, or nothing.
    /// `isCalm`: nothing has happened for a while.
    [[nodiscard]] std::optional<std::string> check(const AppController& velko, bool isCalm);
    /// To be called instead while Velko does not run.
    void forget() { before_ = {}; }

 private:
    /// What held after the step before.
    struct Before {
        int reach = 0;
        bool isKnown = false;  ///< Velko knew how wide every icon was, and where the broom was
        std::vector<Display> displays{};
    };

    [[nodiscard]] bool knowsAll(const AppController& velko) const;
    [[nodiscard]] std::optional<std::string> iconUnderNotch(const AppController& velko) const;
    [[nodiscard]] bool isWideAsTold(const AppController& velko) const;

    World& world_;
    Before before_{};
};

}  // namespace velko::scenarios
