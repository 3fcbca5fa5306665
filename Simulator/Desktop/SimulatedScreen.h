#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <variant>
#include <vector>

#include "Simulator/Desktop/SimulatedObservers.h"
#include "VelkoCore/Geometry.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Screen.h"

namespace velko {

/// The screens, in any arrangement.
class SimulatedDisplays final : public Displays {
 public:
    /// If `displays` is empty, there is one desk screen.
    SimulatedDisplays(MainThread& mainThread, std::vector<Display> displays)
        : displays_(displays.empty() ? std::vector{plain()} : std::move(displays)), observers_(mainThread) {}

    static constexpr double housingWidth = 188;  ///< points

    /// A laptop's screen with a camera housing, its lower left corner at `origin`.
    [[nodiscard]] static Display notched(Point origin = {}, Size size = {1512, 982});
    /// A desk screen, its lower left corner at `origin`.
    [[nodiscard]] static Display plain(Point origin = {}, Size size = {1920, 1080});

    [[nodiscard]] std::vector<Display> displays() const override { return displays_; }
    /// The height of the primary screen's bar.
    [[nodiscard]] double statusBarThickness() const override;
    [[nodiscard]] Subscription observeChanges(std::function<void()> handler) override;

    /// How many observers the screens have.
    [[nodiscard]] std::size_t observers() const { return observers_.count(); }

    /// Sets the screens, the primary one first, and tells the observers.
    void set(std::vector<Display> displays);

 private:
    std::vector<Display> displays_;
    SimulatedObservers<std::monostate> observers_;
};

class SimulatedAccessibility;

/// The windows on screen, the menu that is open, and which app is in front.
class SimulatedWindows final : public Windows {
 public:
    /// `accessibility` outlives this. It tells an app's observers when the app's menu opens and closes.
    explicit SimulatedWindows(SimulatedAccessibility& accessibility) : accessibility_(accessibility) {}

    [[nodiscard]] std::optional<std::vector<WindowInfo>> onScreen() const override;
    [[nodiscard]] std::int64_t popUpMenuLevel() const override { return menuLevel; }

    /// Opens a process's menu in place of any other.
    void openMenu(ProcessID pid);
    void closeMenu();
    /// The process whose menu is open.
    [[nodiscard]] std::optional<ProcessID> menuOwner() const noexcept {
        const ProcessID owner = menuOwner_;
        return isReal(owner) ? std::optional(owner) : std::nullopt;
    }

    static constexpr double usualMenus = 300;  ///< points

    /// An app comes to the front, with menus of that width.
    void bringToFront(ProcessID pid, double menus = usualMenus) {
        front_ = pid;
        menus_ = menus;
    }
    [[nodiscard]] ProcessID front() const noexcept { return front_; }
    /// Where that app's own menus are, in a bar of that height. Nothing if no app has come to the front, or
    /// if that app has quit. Origin at the top left of the primary screen.
    [[nodiscard]] std::optional<Rect> frontMenus(double height) const;

    /// Windows below the menu, front to back.
    std::vector<WindowInfo> others;

 private:
    static constexpr std::int64_t menuLevel = 101;

    SimulatedAccessibility& accessibility_;
    std::atomic<ProcessID> menuOwner_{0};  ///< 0: none; read on any thread
    ProcessID front_ = 0;
    double menus_ = usualMenus;
};

}  // namespace velko
