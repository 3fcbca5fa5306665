#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "Velko/View/Node.h"
#include "VelkoCore/Geometry.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// One of the places in which Velko shows a tree: a panel or a window. Main thread.
class Surface : private NonCopyable {
 public:
    /// How the user asks a surface to close.
    enum class Dismissal { clickOutside, escape, closeButton };

    /// Where a panel is. Rectangles have their origin at the bottom left of the primary screen.
    struct Place {
        Rect anchor{};     ///< the panel hangs below the middle of this
        Rect bounds{};     ///< the panel stays within this
        double shift = 0;  ///< how far the panel's middle is to the right of the anchor's middle

        bool operator==(const Place&) const = default;
    };
    /// How a panel comes and goes: on a spring, as a drawer slides, or by fading.
    struct Motion {
        Timing::Seconds springResponse{};  ///< zero: no spring
        double springDamping = 1;          ///< 1: it never swings past its goal
        Timing::Seconds fade{};

        bool operator==(const Motion&) const = default;
    };
    struct Opening {
        std::string title{};           ///< a window shows it; of a panel VoiceOver says it
        std::optional<Place> place{};  ///< of a panel; a window opens in the middle of its screen
        Motion motion{};
        bool takesKeyboard =
            true;  ///< of the note and the shelf: as soon as they open, and not only after a click
        view::Node content{};
        /// Whether a press outside of it is not to count as a click outside, because it means something else.
        /// The point's origin is at the bottom left of the primary screen. Absent: every press counts.
        std::function<bool(Point)> ignoresPress{};
        /// The user wants to close it. Returns whether it closes. Absent: it always closes.
        std::function<bool(Dismissal)> dismiss{};
        /// The user has pressed a key in it. It does not matter whether a control listens to that key.
        std::function<void()> keyPressed{};
        /// It has closed, whoever closed it. Called once, and never within `open` or `close`.
        std::function<void()> closed{};
    };

    virtual ~Surface() = default;

    /// Shows it in front. A surface that is open closes first, and its `closed` is called all the same.
    virtual void open(Opening opening) = 0;

    /// Draws another tree in it. A control that keeps its id and kind also keeps its focus, its scroll
    /// position and its open menu. Nothing happens while the surface is closed.
    virtual void update(view::Node content) = 0;

    /// Moves a panel that is open.
    virtual void move(const Place& place) = 0;

    /// Brings an open window in front of other windows.
    virtual void raise() = 0;

    virtual void close() = 0;
    [[nodiscard]] virtual bool isOpen() const = 0;

    /// Whether the user is busy with it: a menu of a control is open, or a tile is being dragged.
    [[nodiscard]] virtual bool isInHand() const = 0;

    /// Its frame on the screen, with the origin at the bottom left of the primary screen; nothing while it is
    /// closed.
    [[nodiscard]] virtual std::optional<Rect> frame() const = 0;
};

/// Velko's surfaces, which live as long as this does. Main thread.
class Surfaces : private NonCopyable {
 public:
    enum class Kind { note, shelf, setup, permissionGuide, settings, search, message, history };

    /// What the system shows a surface in. A panel floats above windows on every Space, and never brings
    /// Velko to the front.
    enum class Form {
        window,
        panel,           ///< below menus; takes the keyboard; a click outside and Escape close it
        panelWithArrow,  ///< the same, with an arrow at its top that points at its anchor
        quietPanel,      ///< never takes the keyboard, and only Velko closes it
    };

    /// What never changes about a surface.
    struct Traits {
        Kind kind;
        std::string_view name;  ///< in scenarios and in the playground's page
        Form form;
        std::string_view title;       ///< empty: the title depends on what it shows
        bool remembersPlace = false;  ///< it opens where it was last, as high as it was; only windows do

        [[nodiscard]] constexpr bool isWindow() const noexcept { return form == Form::window; }
        /// Whether a click outside and Escape close it.
        [[nodiscard]] constexpr bool isTransient() const noexcept {
            return form == Form::panel || form == Form::panelWithArrow;
        }
    };

    /// All surfaces, in the order of `Kind`. Every renderer, scenario and check takes them from this table.
    [[nodiscard]] static constexpr std::span<const Traits> all() noexcept;
    [[nodiscard]] static constexpr const Traits& traitsOf(Kind kind) noexcept;
    /// Nothing if no surface has that name.
    [[nodiscard]] static std::optional<Kind> kindNamed(std::string_view name) noexcept;

    virtual ~Surfaces() = default;

    [[nodiscard]] virtual Surface& surface(Kind kind) = 0;

    /// Whether the user has asked the system for less motion.
    [[nodiscard]] virtual bool reducesMotion() const = 0;

    /// Lets a screen reader say something that has changed where it does not look. Nothing happens without a
    /// screen reader.
    virtual void announce(const std::string& words) = 0;
};

inline constexpr auto surfaceTable = std::to_array<Surfaces::Traits>({
    {Surfaces::Kind::note, "note", Surfaces::Form::panelWithArrow, "A note from Velko"},
    {Surfaces::Kind::shelf, "shelf", Surfaces::Form::panel, "Velko's shelf"},
    {Surfaces::Kind::setup, "setup", Surfaces::Form::window, ""},
    {Surfaces::Kind::permissionGuide, "guide", Surfaces::Form::quietPanel, "Velko's guide"},
    {Surfaces::Kind::settings, "settings", Surfaces::Form::window, "Velko Settings", true},
    {Surfaces::Kind::search, "search", Surfaces::Form::panel, "Search the menu bar"},
    {Surfaces::Kind::message, "message", Surfaces::Form::quietPanel, "A message from Velko"},
    {Surfaces::Kind::history, "history", Surfaces::Form::window, "Earlier Layouts"},
});

constexpr std::span<const Surfaces::Traits> Surfaces::all() noexcept {
    return surfaceTable;
}

constexpr const Surfaces::Traits& Surfaces::traitsOf(Kind kind) noexcept {
    return surfaceTable.at(static_cast<std::size_t>(kind));
}

static_assert(std::ranges::all_of(Surfaces::all(),
                                  [](const auto& row) { return &Surfaces::traitsOf(row.kind) == &row; }),
              "The rows are in the order of the kinds.");

inline std::optional<Surfaces::Kind> Surfaces::kindNamed(std::string_view name) noexcept {
    const auto* const found = std::ranges::find(surfaceTable, name, &Traits::name);
    return found == surfaceTable.end() ? std::nullopt : std::optional(found->kind);
}

/// Shows a surface for its controller, and closes it. A surface tells only some time later that it has
/// closed. So this passes on the news for the newest opening only, and none after it is destroyed. Its
/// destructor closes the surface. Main thread.
class OpenSurface final : private NonCopyable {
 public:
    /// `surfaces` outlives this.
    OpenSurface(Surfaces& surfaces, Surfaces::Kind kind) : kind_(kind), surface_(surfaces.surface(kind)) {}
    ~OpenSurface();

    /// Opens the surface, in place of an opening before. Without a title the opening gets the surface's own
    /// title. If the opening has a `closed`, `changes` stays active until right before `closed` is called.
    void open(Surface::Opening opening, Subscription changes = {});

    /// Draws another tree in it. A control that keeps its id and kind also keeps its focus, its scroll
    /// position and its open menu. Nothing happens while the surface is closed.
    void update(view::Node content) { surface_.update(std::move(content)); }

    /// Moves it, unless it is at that place already.
    void move(const Surface::Place& to);

    /// Brings it in front of other windows.
    void raise() { surface_.raise(); }

    void close() { surface_.close(); }

    [[nodiscard]] bool isOpen() const { return surface_.isOpen(); }

    /// Its frame, with the origin at the bottom left of the primary screen; nothing while it is closed.
    [[nodiscard]] std::optional<Rect> frame() const { return surface_.frame(); }

    /// The place where it was opened, or to which it was last moved; nothing for a window.
    [[nodiscard]] const std::optional<Surface::Place>& place() const noexcept { return place_; }

 private:
    Surfaces::Kind kind_;
    Surface& surface_;
    std::optional<Surface::Place> place_;
    std::shared_ptr<Subscription> opening_;  ///< the newest opening, until it is known to have closed
};

}  // namespace velko
