#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "Velko/View/Node.h"
#include "VelkoCore/Geometry.h"
#include "VelkoCore/NonCopyable.h"

namespace velko {

/// One of the places in which Velko shows a tree: a panel or a window. Main thread.
class Surface : private NonCopyable {
 public:
    /// How the user asks for it to go.
    enum class Dismissal { clickOutside, escape, closeButton };

    /// Where a panel stands. Rectangles have their origin at the bottom left of the primary screen.
    struct Place {
        Rect anchor{};     ///< it hangs below the middle of this
        Rect bounds{};     ///< and stays within this
        double shift = 0;  ///< of its middle, from that of the anchor to the right

        bool operator==(const Place&) const = default;
    };
    /// How a panel comes and goes: sprung like a drawer, or faded.
    struct Motion {
        double springResponse = 0;  ///< seconds; 0: no spring
        double springDamping = 1;   ///< 1: without overshoot
        double fade = 0;            ///< seconds

        bool operator==(const Motion&) const = default;
    };
    struct Opening {
        std::string title{};           ///< in a window's title bar; a panel's is spoken only
        std::optional<Place> place{};  ///< of a panel; a window stands in the middle of its screen
        Motion motion{};
        bool takesKeyboard = true;  ///< of the note and the shelf: at once, and not only once it is clicked
        view::Node content{};
        /// Whether a press outside of it is no click outside: it means something else. The point's origin is
        /// at the bottom left of the primary screen. Absent: each is one.
        std::function<bool(Point)> ignoresPress{};
        /// The user wants it gone: whether it goes. Absent: it always does.
        std::function<bool(Dismissal)> dismiss{};
        /// A key went down in it, whether or not anything listens to that key.
        std::function<void()> keyPressed{};
        /// It has gone, whoever closed it. Called once, never within `open` or `close`.
        std::function<void()> closed{};
    };

    virtual ~Surface() = default;

    /// Shows it in front. One that is open is closed first, and its `closed` is called all the same.
    virtual void open(Opening opening) = 0;

    /// Draws another tree in the one that is open; what kept its id and kind keeps focus, scroll position
    /// and open menus. Nothing happens while it is closed.
    virtual void update(view::Node content) = 0;

    /// Moves a panel that is open.
    virtual void move(const Place& place) = 0;

    /// Brings a window that is open in front of others.
    virtual void raise() = 0;

    virtual void close() = 0;
    [[nodiscard]] virtual bool isOpen() const = 0;

    /// Whether the user is amid something in it: a menu of a control is open, or a tile is being dragged.
    [[nodiscard]] virtual bool isInHand() const = 0;

    /// Where it is on screen: origin at the bottom left of the primary screen; nothing while it is closed.
    [[nodiscard]] virtual std::optional<Rect> frame() const = 0;
};

/// Velko's surfaces. Main thread; they live as long as this does.
class Surfaces : private NonCopyable {
 public:
    enum class Kind { note, shelf, setup, permissionGuide, settings };

    /// What the system shows a surface in. A panel floats above windows on every Space, and never brings
    /// Velko to the front.
    enum class Form {
        window,
        panel,           ///< below menus; takes the keyboard; a click outside and Escape close it
        panelWithArrow,  ///< the same, with an arrow at its top that points at its anchor
        quietPanel,      ///< never takes the keyboard, and only Velko closes it
    };

    /// What is fixed about a surface.
    struct Traits {
        Kind kind;
        std::string_view name;  ///< in scenarios and in the playground's page
        Form form;
        std::string_view title;  ///< empty: the title depends on what it shows

        [[nodiscard]] constexpr bool isWindow() const noexcept { return form == Form::window; }
        /// Whether a click outside and Escape close it.
        [[nodiscard]] constexpr bool isTransient() const noexcept {
            return form == Form::panel || form == Form::panelWithArrow;
        }
    };

    /// All surfaces in the order of `Kind`. Whoever draws, plays or checks surfaces goes by this table.
    [[nodiscard]] static constexpr std::span<const Traits> all() noexcept;
    [[nodiscard]] static constexpr const Traits& traitsOf(Kind kind) noexcept;
    /// Nothing where no surface has that name.
    [[nodiscard]] static std::optional<Kind> kindNamed(std::string_view name) noexcept;

    virtual ~Surfaces() = default;

    [[nodiscard]] virtual Surface& surface(Kind kind) = 0;

    /// Whether the user has asked the system for less motion.
    [[nodiscard]] virtual bool reducesMotion() const = 0;

    /// Has a screen reader say something that has changed where it does not look; nothing happens without
    /// one.
    virtual void announce(const std::string& words) = 0;
};

inline constexpr auto surfaceTable = std::to_array<Surfaces::Traits>({
    {Surfaces::Kind::note, "note", Surfaces::Form::panelWithArrow, "A note from Velko"},
    {Surfaces::Kind::shelf, "shelf", Surfaces::Form::panel, "Velko's shelf"},
    {Surfaces::Kind::setup, "setup", Surfaces::Form::window, ""},
    {Surfaces::Kind::permissionGuide, "guide", Surfaces::Form::quietPanel, "Velko's guide"},
    {Surfaces::Kind::settings, "settings", Surfaces::Form::window, "Velko Settings"},
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

}  // namespace velko
