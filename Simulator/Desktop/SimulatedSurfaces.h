#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Velko/Ports/Surfaces.h"
#include "Velko/View/Node.h"
#include "Velko/View/Tree.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

/// A surface whose tree tests can read, and whose controls a simulated user uses.
class SimulatedSurface final : public Surface {
 public:
    /// `isTransient`: like a menu, it is closed by a click outside and by Escape.
    SimulatedSurface(MainThread& mainThread, bool isTransient)
        : mainThread_(mainThread), isTransient_(isTransient) {}

    void open(Opening opening) override;
    void update(view::Node content) override;
    void move(const Place& place) override;
    void raise() override { ++raised_; }
    void close() override;
    [[nodiscard]] bool isOpen() const override { return opening_.has_value(); }
    [[nodiscard]] bool isInHand() const override { return isOpen() && inHand; }
    /// A panel of `size` below its anchor. It is moved only as far as is needed to stay within its bounds.
    [[nodiscard]] std::optional<Rect> frame() const override;
    /// Closes it and tells nobody, because the program that showed it has ended.
    void forget();

    /// What shows; null while it is closed.
    [[nodiscard]] const view::Node* content() const noexcept {
        return opening_ ? &opening_->content : nullptr;
    }
    /// Everything that it was opened with; null while it is closed.
    [[nodiscard]] const Opening* opening() const noexcept { return opening_ ? &*opening_ : nullptr; }

    /// The user uses a control. Returns whether the control accepted that.
    bool perform(std::string_view id, const view::Input& input = {});
    /// The user tries to close it.
    void dismiss(Dismissal how);
    /// A mouse button goes down somewhere. Origin at the bottom left of the primary screen.
    void pressAt(Point point);
    /// The user presses a key. If no control listens to Escape, it closes a panel.
    bool press(const view::Shortcut& shortcut);

    /// The user has one of its menus open, or is dragging a tile. False whenever the surface opens.
    bool inHand = false;
    Size size{.width = 480, .height = 120};  ///< of what is drawn; a renderer sets the real one

    /// How often it was brought to the front.
    [[nodiscard]] int raised() const noexcept { return raised_; }
    /// A number that grows with every change of what shows.
    [[nodiscard]] std::uint64_t revision() const noexcept { return revision_; }

 private:
    /// A window with pages in its toolbar has the title of the page.
    void nameAfterPage();

    MainThread& mainThread_;
    bool isTransient_;
    std::optional<Opening> opening_;
    int raised_ = 0;
    std::uint64_t revision_ = 0;
};

/// All of Velko's surfaces on the simulated Mac.
class SimulatedSurfaces final : public Surfaces {
 public:
    explicit SimulatedSurfaces(MainThread& mainThread);

    [[nodiscard]] SimulatedSurface& surface(Kind kind) override;
    [[nodiscard]] bool reducesMotion() const override { return reducedMotion; }

    void announce(const std::string& words) override { announcements_.push_back(words); }

    /// A mouse button goes down somewhere, and every surface that listens for presses outside hears of it.
    /// Origin at the bottom left of the primary screen; the default is a point on the desktop.
    void clickOutside(Point point = {.x = 300, .y = 500});
    [[nodiscard]] bool isAnyOpen() const;
    [[nodiscard]] bool isWindowOpen() const;
    /// What a screen reader was told, oldest first.
    [[nodiscard]] const std::vector<std::string>& announcements() const noexcept { return announcements_; }
    /// Closes their menus and drops what is being dragged. Returns whether there was anything.
    bool letGo();
    /// `SimulatedSurface::forget` for each.
    void forget();
    /// A number that grows with every change of what shows, and with every announcement.
    [[nodiscard]] std::uint64_t revision() const;

    bool reducedMotion = false;

 private:
    [[nodiscard]] SimulatedSurface& at(Kind kind) const;

    std::vector<std::unique_ptr<SimulatedSurface>> surfaces_;  ///< in the order of `Kind`
    std::vector<std::string> announcements_;
};

/// Looks for a fault: two nodes with one id, a control without a spoken name or with an impossible value, or
/// one key for two actions.
[[nodiscard]] std::optional<std::string> faultIn(const view::Node& root);

/// Looks for a fault: an entry without a title, or one that can be chosen and neither does anything nor opens
/// a submenu.
[[nodiscard]] std::optional<std::string> faultIn(const view::Menu& menu);

}  // namespace velko
