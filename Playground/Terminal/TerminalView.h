#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>

#include "Scenarios/Language/Step.h"
#include "Scenarios/World.h"
#include "VelkoCore/NonCopyable.h"

namespace velko::playground {

/// Shows a scenario in a terminal while it is played: what happens, the menu bar as a person sees it, and
/// what Velko logs.
class TerminalView final : private NonCopyable {
 public:
    struct Manner {
        bool isBold = false;                     ///< whether headings are bold
        std::optional<std::int64_t> speed = {};  ///< how many times real time; without it, at once
        std::function<bool()> isOver = {};       ///< asked all the time; true stops the scenario
    };

    /// Sets the world's `passTime` and its Mac's `onMenuBarChange`.
    TerminalView(scenarios::World& world, std::ostream& screen, Manner manner);

    /// Must be called before each step.
    void begin(const script::Step& step);

    /// Shows the result of the last steps.
    void showOutcome();

    /// Prints the plan in force, and what Velko has cost the machine.
    void showSummary();

 private:
    void pass(MainThread::Uptime duration);
    void passInRealTime(MainThread::Uptime duration, std::int64_t speed);
    [[nodiscard]] bool isOver() const { return manner_.isOver && manner_.isOver(); }
    void showBar();
    void showLog();

    scenarios::World& world_;
    std::ostream& screen_;
    Manner manner_;
    bool hasBarChanged_ = true;
    bool hasBegun_ = false;
    std::uint64_t logBytesShown_ = 0;
};

}  // namespace velko::playground
