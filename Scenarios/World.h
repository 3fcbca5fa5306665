#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include "Simulator/Files/LibplistReader.h"
#include "Simulator/Machine/SimulatedMac.h"
#include "Velko/App/AppController.h"
#include "Velko/App/AppDelegate.h"
#include "Velko/App/Log.h"
#include "VelkoCore/NonCopyable.h"

namespace velko::scenarios {

/// A simulated Mac on which Velko can be started, quit and started again, with a folder that holds Velko's
/// layout, its log and what it exports. Prints nothing. One thread.
class World final : private NonCopyable {
 public:
    /// The folder is made where it is missing. Velko is not started yet, and its broom not in the bar.
    explicit World(std::filesystem::path folder, const SimulatedMacOptions& options = {});
    ~World();

    [[nodiscard]] SimulatedMac& mac() noexcept { return mac_; }
    [[nodiscard]] const SimulatedMac& mac() const noexcept { return mac_; }
    /// Velko, or null while it does not run.
    [[nodiscard]] AppController* velko() noexcept { return velko_ ? &velko_->controller() : nullptr; }
    /// What Velko has logged, over all its runs.
    [[nodiscard]] const Log& log() const noexcept { return log_; }

    [[nodiscard]] std::filesystem::path layoutFile() const { return folder_ / "layout.json"; }
    /// Where the user keeps exported layouts.
    [[nodiscard]] std::filesystem::path documents() const { return folder_ / "Documents"; }

    /// Starts Velko, unless it runs.
    void startVelko();
    /// The user opens Velko though it runs; whether it does.
    bool reopenVelko();
    /// Quits Velko, if it runs: it writes what was to be saved and is gone.
    void quitVelko();
    /// Ends Velko, if it runs, without a chance to do anything.
    void crashVelko();

    /// While this is set, no layout can be written.
    bool savingFails = false;

    /// How time passes; `SimulatedMac::advance`, unless a show slows it down.
    std::function<void(MainThread::Uptime)> passTime;

    /// Called just after Velko has come into being and before it starts, to watch it.
    std::function<void(AppController&)> onStart;
    /// Called just before Velko is gone: nothing of it may be called from then on.
    std::function<void()> onEnd;

 private:
    std::filesystem::path folder_;
    SimulatedMac mac_;
    Log log_;
    LibplistReader propertyLists_;
    std::optional<std::size_t> broomPlace_;  ///< in the bar, as the system keeps it between runs
    std::unique_ptr<AppDelegate> velko_;
};

}  // namespace velko::scenarios
