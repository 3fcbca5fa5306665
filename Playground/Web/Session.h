#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Scenarios/World.h"
#include "Simulator/Machine/SimulatedMac.h"
#include "Velko/Ports/Surfaces.h"
#include "Velko/View/Menu.h"
#include "VelkoCore/NonCopyable.h"

namespace velko::web {

/// The system's settings on the simulated Mac, as far as Velko sends its user there: a window with the list
/// of the apps that may control the Mac.
class SystemSettings final {
 public:
    /// Opens the window when an address of the settings has been opened since the last look.
    void look(SimulatedMac& mac);
    void close(SimulatedMac& mac);
    [[nodiscard]] bool isOpen() const noexcept { return pid_.has_value(); }

 private:
    void open(SimulatedMac& mac);

    std::size_t addressesSeen_ = 0;
    std::optional<ProcessID> pid_;
};

/// What became of something that the page asked for: nothing, or one line that says why it did not happen.
using Done = std::expected<void, std::string>;

/// A simulated Mac with Velko on it, and what a page needs to show it and to work it: how fast time passes,
/// which menu is open, what the user has read. One thread at a time.
class Session final : private NonCopyable {
 public:
    /// A menu that is open, and the element of the page that it hangs from.
    struct OpenMenu {
        std::string anchor;
        view::Menu items;
        std::optional<Surfaces::Kind> surface{};  ///< of the control that it belongs to
    };

    /// Starts the neighbours and then Velko, with what the folder keeps of earlier runs.
    explicit Session(const std::filesystem::path& home);

    [[nodiscard]] scenarios::World& world() noexcept { return world_; }
    [[nodiscard]] SimulatedMac& mac() noexcept { return world_.mac(); }

    // Time

    /// Lets real time pass: Velko's at its speed, and what is left of a jump as far as `budget` allows.
    void pass(std::chrono::nanoseconds real, std::chrono::nanoseconds budget);
    void setSpeed(double speed) noexcept { speed_ = speed; }
    [[nodiscard]] double speed() const noexcept { return speed_; }
    /// Virtual time that is to pass as fast as it can; not beyond what the simulated clock knows.
    Done jump(MainThread::Uptime duration);
    void stopJump() noexcept { jump_ = MainThread::Uptime(0); }
    [[nodiscard]] MainThread::Uptime jumpLeft() const noexcept { return jump_; }
    /// Runs what is due at this moment. After everything that the page has done.
    void settle();
    /// Grows whenever what the page shows may have changed.
    [[nodiscard]] std::uint64_t revision();

    // What only a page has

    /// The menu that is open: a control's, the broom's or an app's.
    [[nodiscard]] std::vector<OpenMenu> menus();
    void openControlMenu(OpenMenu menu);
    /// Picks from the open menu; an empty place closes it.
    Done choose(const std::vector<std::size_t>& place);
    void closeMenus();
    /// Closes a control's menu, if one is open.
    void closeControlMenu();
    void readAlert() noexcept { ++alertsRead_; }
    /// The alert that is on display; null when all have been read.
    [[nodiscard]] const Dialogs::Alert* alert();
    [[nodiscard]] SystemSettings& systemSettings() noexcept { return systemSettings_; }
    /// Quits Velko, takes its layout away, and starts it anew.
    Done startOver();

 private:
    void noteChange() noexcept { ++changes_; }
    void forgetVelko();

    scenarios::World world_;
    double speed_ = 1;
    MainThread::Uptime owed_{0};
    MainThread::Uptime jump_{0};
    bool isQuitting_ = false;
    std::vector<OpenMenu> controlMenu_;  ///< one or none
    std::size_t alertsRead_ = 0;
    SystemSettings systemSettings_;
    std::uint64_t changes_ = 0;
};

/// Every surface and its name in the page.
struct NamedSurface {
    Surfaces::Kind kind;
    std::string_view name;
    std::string_view spoken;  ///< for screen readers, while it has no title
};
[[nodiscard]] std::span<const NamedSurface> namedSurfaces();

}  // namespace velko::web
