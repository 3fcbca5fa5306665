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
#include "Scenarios/Rules/RoomRules.h"
#include "Scenarios/World.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko::scenarios {

/// The rules that Velko keeps at every moment, whatever happens to its Mac. This object watches a world as
/// long as it lives, also while time passes. For that it uses the world's `onStart` and its Mac's
/// `onMenuBarChange`, and calls the functions that were set there before. One thread.
class Invariants final : private NonCopyable {
 public:
    explicit Invariants(World& world);
    ~Invariants();

    /// To be called after each step; `done` is that step. Runs the work that is due now, and checks all
    /// rules. Returns the first rule that was broken since the last call, in one line, or nothing. The words
    /// before the colon name the rule.
    [[nodiscard]] std::optional<std::string> check(const script::Step& done);

 private:
    using Uptime = MainThread::Uptime;

    /// Long enough for everything that ends by itself: an opening, its reveal and the wait for the pointer; a
    /// pop-out; a show-me; and two rounds of scans.
    static constexpr std::chrono::minutes calm{4};

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
    /// The apps that own icons, as Velko knows them.
    [[nodiscard]] static BundleIDs ownersOf(const AppController& velko);
    [[nodiscard]] bool mayShowAll(const AppController& velko) const;

    World& world_;
    std::function<void(AppController&)> nextOnStart_;
    std::function<void()> nextOnMenuBarChange_;
    std::vector<std::string> systemItems_;  ///< those that showed at the beginning
    LayoutFileRules layoutFile_;
    FaceRules faces_;
    RoomRules room_;
    Model model_;
    Subscription notices_;
    bool wasToldThisTurn_ = false;
    std::optional<Uptime> shownAllAt_;  ///< when hiding ended because the user wanted to see everything
    Uptime calmSince_{0};
    std::uint64_t wakeUps_ = 0;  ///< up to the last check
    std::optional<std::string> breach_;
};

}  // namespace velko::scenarios
