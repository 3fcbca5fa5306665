#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Scenarios/Language/Step.h"
#include "Scenarios/Model/Model.h"
#include "Scenarios/Rules/FaceRules.h"
#include "Scenarios/Rules/LayoutFileRules.h"
#include "Scenarios/World.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko::scenarios {

/// What holds of Velko at every moment, whatever happens to its Mac. Watches a world from its own beginning
/// to its end, also amid time that passes; for that it takes over the world's `onStart` and its Mac's
/// `onMenuBarChange`, and passes both on. One thread.
class Invariants final : private NonCopyable {
 public:
    explicit Invariants(World& world);
    ~Invariants();

    /// Lets happen what is due now and looks at everything. `done` is the step that was just performed; to
    /// be called after each. What did not hold first since the last call, in one line; nothing when all is
    /// well. The words up to the colon name the rule.
    [[nodiscard]] std::optional<std::string> check(const script::Step& done);

 private:
    using Uptime = MainThread::Uptime;

    void watch(AppController& velko);
    void require(bool holds, const std::string& rule, const std::function<std::string()>& detail = {});
    void runWhatIsDue();

    // At every moment
    void barChanged();
    void hidingEnded();
    void observerTold();

    // After every step
    void remember(const script::Step& done);
    void checkWhileGone();
    void checkEngine(const AppController& velko);
    void checkValues(const AppController& velko);
    void checkManners();
    void checkCalm(const AppController& velko);
    void checkRest(const AppController& velko, const script::Step& done);
    [[nodiscard]] bool isCalm() const;
    void checkInventory(const AppController& velko);
    [[nodiscard]] bool mayShowAll(const AppController& velko) const;

    World& world_;
    std::function<void(AppController&)> nextOnStart_;
    std::function<void()> nextOnMenuBarChange_;
    std::vector<std::string> systemItems_;  ///< that showed in the beginning
    LayoutFileRules layoutFile_;
    FaceRules faces_;
    Model model_;
    Subscription notices_;
    bool wasToldThisTurn_ = false;
    std::optional<Uptime> shownAllAt_;  ///< the hiding change that was the user's wish to see everything
    Uptime calmSince_{0};
    std::uint64_t wakeUps_ = 0;  ///< up to the last check
    std::optional<std::string> breach_;
};

}  // namespace velko::scenarios
