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

/// A surface whose tree is there to be read, and whose controls a simulated user works.
class SimulatedSurface final : public Surface {
 public:
    /// `isTransient`: a click outside and Escape close it, as a menu.
    SimulatedSurface(MainThread& mainThread, bool isTransient)
        : mainThread_(mainThread), isTransient_(isTransient) {}

    void open(Opening opening) override;
    void update(view::Node content) override;
    void move(const Place& place) override;
    void raise() override { ++raised_; }
    void close() override;
    [[nodiscard]] bool isOpen() const override { return opening_.has_value(); }
    [[nodiscard]] bool isInHand() const override { return isOpen() && inHand; }
    /// A panel of `size` that hangs below its anchor, moved as little as its bounds ask.
    [[nodiscard]] std::optional<Rect> frame() const override;
    /// Closes it without a word to anybody: the program that showed it has ended.
    void forget();

    /// What shows; null while it is closed.
    [[nodiscard]] const view::Node* content() const noexcept {
        return opening_ ? &opening_->content : nullptr;
    }
    /// Everything that it was opened with; null while it is closed.
    [[nodiscard]] const Opening* opening() const noexcept { return opening_ ? &*opening_ : nullptr; }

    /// The user works a control; whether it took it.
    bool perform(std::string_view id, const view::Input& input = {});
    /// The user asks for it to go.
    void dismiss(Dismissal how);
    /// A button goes down, outside of everything or here. Origin at the bottom left of the primary screen.
    void pressAt(Point point);
    /// The user presses a key that a control listens to; Escape without one asks a panel to go.
    bool press(const view::Shortcut& shortcut);

    /// The user opens a menu of its and leaves it open, or drags a tile; nobody does when it opens.
    bool inHand = false;
    Size size{.width = 480, .height = 120};  ///< of what is drawn; whoever draws it knows better

    /// How often it was brought to the front.
    [[nodiscard]] int raised() const noexcept { return raised_; }
    /// Grows with every change of what shows.
    [[nodiscard]] std::uint64_t revision() const noexcept { return revision_; }

 private:
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

    /// A button goes down somewhere, and whatever listens for presses outside of it hears of that. Origin at
    /// the bottom left of the primary screen; left out, on the desktop.
    void clickOutside(Point point = {.x = 300, .y = 500});
    [[nodiscard]] bool isAnyOpen() const;
    [[nodiscard]] bool isWindowOpen() const;
    /// What a screen reader was told, oldest first.
    [[nodiscard]] const std::vector<std::string>& announcements() const noexcept { return announcements_; }
    /// Menus of theirs close, and what is being dragged is let go. Whether there was anything.
    bool letGo();
    /// `SimulatedSurface::forget` for each.
    void forget();
    /// Grows with every change of what shows.
    [[nodiscard]] std::uint64_t revision() const;

    bool reducedMotion = false;

 private:
    [[nodiscard]] SimulatedSurface& at(Kind kind) const;

    std::vector<std::unique_ptr<SimulatedSurface>> surfaces_;  ///< in the order of `Kind`
    std::vector<std::string> announcements_;
};

/// Each node has an id of its own, each control says what it is and shows a value that it can have, and no
/// key means two things.
[[nodiscard]] std::optional<std::string> faultIn(const view::Node& root);

/// Each entry has a title, and one that can be chosen does something or opens a submenu.
[[nodiscard]] std::optional<std::string> faultIn(const view::Menu& menu);

}  // namespace velko
