#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>

#include "Playground/Script/Step.h"
#include "Playground/Stage.h"

namespace velko::playground {

/// Tells a scenario in a terminal while it is played: what happens, the menu bar as a person sees it, and
/// what Velko logs.
class Show final {
 public:
    struct Manner {
        bool isBold = false;                     ///< whether headings may use the terminal's bold
        std::optional<std::int64_t> speed = {};  ///< how many times as fast as life; left out: at once
        std::function<bool()> isOver = {};       ///< whether to stop, even while time passes
    };

    /// Takes over how the stage's time passes, and its Mac's `onMenuBarChange`.
    Show(Stage& stage, std::ostream& screen, Manner manner);
    Show(const Show&) = delete;
    Show& operator=(const Show&) = delete;
    ~Show() = default;

    /// To be called before each step.
    void begin(const script::Step& step);

    /// Shows what the last steps came to.
    void showOutcome();

    /// Says which plan is in force and what Velko has cost the machine.
    void showSummary();

 private:
    void pass(MainThread::Uptime duration);
    void passInRealTime(MainThread::Uptime duration, std::int64_t speed);
    [[nodiscard]] bool isOver() const { return manner_.isOver && manner_.isOver(); }
    void showBar();
    void showLog();

    Stage& stage_;
    std::ostream& screen_;
    Manner manner_;
    bool hasBarChanged_ = true;
    bool hasBegun_ = false;
    std::uint64_t logBytesShown_ = 0;
};

}  // namespace velko::playground
