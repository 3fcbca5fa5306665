#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "Simulator/SimulatedMac.h"
#include "Velko/AppController.h"
#include "Velko/Log.h"

namespace velko::playground {

/// Velko on a simulated Mac, told step by step on standard output: what happens, the menu bar as a person
/// sees it, and the log lines of the step.
class Stage final {
 public:
    Stage(const std::filesystem::path& layoutFile, std::filesystem::path logFile);

    [[nodiscard]] SimulatedMac& mac() noexcept { return mac_; }
    [[nodiscard]] AppController& velko() noexcept { return *velko_; }

    /// Prints what happened: `title`, the bar, and everything logged since the step before.
    void show(const std::string& title);

    /// Prints the plan in force, how long things took and what Velko cost the machine.
    void showSummary();

 private:
    SimulatedMac mac_;
    Log log_;
    std::uint64_t logBytesBefore_;
    std::unique_ptr<AppController> velko_;
    std::size_t linesShown_ = 0;
};

}  // namespace velko::playground
