#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <variant>

#include "Velko/View/Drawing.h"
#include "Velko/View/Menu.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

/// Velko's own icon in the menu bar. There is one, from the first call on. Main thread.
class StatusItem : private NonCopyable {
 public:
    /// The event that the program has last taken when the icon's action runs. It need not be the click's own:
    /// since macOS 27 clicks come by way of the menu bar's host.
    struct Event {
        enum class Type { leftMouse, rightMouse, systemDefined, other };

        /// The subtype of an event about buttons of the mouse.
        static constexpr int mouseButtons = 7;

        Type type = Type::leftMouse;
        int subtype = 0;        ///< of a system-defined one
        std::int64_t data = 0;  ///< of one with `mouseButtons`: a bit for each button, the left one's first
        MainThread::Uptime age{};  ///< how long ago it arose
        bool option = false;       ///< the key was down
        bool control = false;

        bool operator==(const Event&) const = default;
    };
    /// The icon's action has run: a button went up over it, or a program for people with disabilities has
    /// pressed it.
    struct Click {
        std::optional<Event> event{};  ///< nothing when there is none
        unsigned pressedButtons = 0;   ///< down now, as in `Pointer`
        bool option = false;           ///< down on the keyboard now
        bool control = false;
        bool isVoiceOverOn = false;  ///< its own keys are Control and Option together

        bool operator==(const Click&) const = default;
    };
    /// A system symbol in the menu bar's own colour.
    struct Symbol {
        std::string name;
        std::string description;  ///< for VoiceOver

        bool operator==(const Symbol&) const = default;
    };
    /// A drawing is a template as well: its inks do not matter, the menu bar has its own colour.
    using Image = std::variant<view::Drawing, Symbol>;

    virtual ~StatusItem() = default;

    /// Puts the icon into the menu bar. The system remembers its place by `autosaveName`. `label` is its
    /// name for VoiceOver.
    virtual void install(const std::string& autosaveName, const std::string& label,
                         std::function<void(Click)> clicked) = 0;

    virtual void setImage(const Image& image) = 0;
    virtual void setToolTip(const std::string& text) = 0;

    /// Opens a menu below the icon, when no other is up; the next click is a click again. May return only
    /// after it has closed. `closed` is called once it has, also within this call.
    virtual void openMenu(view::Menu menu, std::function<void()> closed) = 0;
    [[nodiscard]] virtual bool isMenuOpen() const = 0;
};

}  // namespace velko
