#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Playground/FaceRules.h"
#include "Playground/KeptFileRules.h"
#include "Playground/Model/Model.h"
#include "Playground/Script/Step.h"
#include "Playground/Stage.h"
#include "VelkoCore/BundleID.h"
#include "VelkoEngine/Ports/Subscription.h"

namespace velko::playground {

/// What holds of Velko at every moment, whatever happens to its Mac. Watches a stage from its own beginning
/// to its end, also amid time that passes; for that it takes over the stage's `onStart` and its Mac's
/// `onMenuBarChange`, and passes both on. One thread.
class Invariants final {
 public:
    explicit Invariants(Stage& stage);
    Invariants(const Invariants&) = delete;
    Invariants& operator=(const Invariants&) = delete;
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
    void checkFaces(AppController& velko);
    [[nodiscard]] bool isCalm() const;
    void checkInventory(const AppController& velko);
    [[nodiscard]] bool mayShowAll(const AppController& velko) const;

    Stage& stage_;
    std::function<void(AppController&)> nextOnStart_;
    std::function<void()> nextOnMenuBarChange_;
    std::vector<std::string> systemItems_;  ///< that showed in the beginning
    KeptFileRules keptFile_;
    FaceRules faces_;
    Model model_;
    Subscription notices_;
    bool wasToldThisTurn_ = false;
    std::optional<double> shownAllAt_;  ///< the hiding change that was the user's wish to see everything
    Uptime calmSince_{0};
    std::uint64_t wakeUps_ = 0;  ///< up to the last check
    std::optional<std::string> breach_;
};

}  // namespace velko::playground
