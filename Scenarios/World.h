#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Simulator/Files/LibplistReader.h"
#include "Simulator/Machine/SimulatedMac.h"
#include "Velko/App/Log.h"
#include "VelkoCore/NonCopyable.h"

namespace velko {
class AppController;
class AppDelegate;
}  // namespace velko

namespace velko::AppMenu {
struct Menu;
}  // namespace velko::AppMenu

namespace velko::scenarios {

/// A simulated Mac on which Velko can be started, quit and started again, with a folder that holds Velko's
/// layout, its log and what it exports. Prints nothing. One thread.
class World final : private NonCopyable {
 public:
    /// Makes the folder if it does not exist. Velko does not run yet, and its broom is not in the bar.
    explicit World(std::filesystem::path folder, const SimulatedMacOptions& options = {});
    ~World();

    [[nodiscard]] SimulatedMac& mac() noexcept { return mac_; }
    [[nodiscard]] const SimulatedMac& mac() const noexcept { return mac_; }
    /// Velko, or null while it does not run.
    [[nodiscard]] AppController* velko() noexcept;
    /// Velko's menus at the top of the screen; none while it does not run. They are not to be used when it
    /// has ended.
    [[nodiscard]] std::vector<AppMenu::Menu> menus();
    /// What Velko has logged, over all its runs.
    [[nodiscard]] Log& log() noexcept { return log_; }
    [[nodiscard]] const Log& log() const noexcept { return log_; }

    [[nodiscard]] std::filesystem::path layoutFile() const { return folder_ / "layout.json"; }
    /// What an administrator places for all users.
    [[nodiscard]] std::filesystem::path managedFile() const { return folder_ / "Managed" / "layout.json"; }
    /// Where the user keeps exported layouts.
    [[nodiscard]] std::filesystem::path documents() const { return folder_ / "Documents"; }

    /// Starts Velko if it does not run.
    void startVelko();
    /// The user opens Velko while it runs. Returns whether it runs.
    bool reopenVelko();
    /// The user, or a page that they look at, opens an address of Velko's. Returns whether Velko runs.
    bool openAddress(const std::string& address);
    /// Quits Velko if it runs. It saves what has to be saved first.
    void quitVelko();
    /// Ends Velko at once if it runs. It cannot save anything.
    void crashVelko();

    /// While this is set, no layout can be written.
    bool savingFails = false;
    /// After so many more calls that change the layout's folder, none has an effect any more, and the last
    /// one is done by half. So the disk looks as if Velko had been killed there. Absent: that never happens.
    std::optional<std::size_t> callsUntilDeath;

    /// Lets time pass. By default this is `SimulatedMac::advance`; a program that shows the scenario replaces
    /// it to slow time down.
    std::function<void(MainThread::Uptime)> passTime;

    /// Called after Velko has been made and before it starts, so that others can watch it.
    std::function<void(AppController&)> onStart;
    /// Called just before Velko is destroyed. Nothing of it may be called after that.
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
