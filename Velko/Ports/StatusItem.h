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

/// Velko's own icon in the menu bar. Main thread.
class StatusItem : private NonCopyable {
 public:
    /// The last event that the program had received when the icon's action ran. It may belong to something
    /// else than the click, because since macOS 27 clicks come through the menu bar's host.
    struct Event {
        enum class Type { leftMouse, rightMouse, systemDefined, other };

        /// The subtype of an event about mouse buttons.
        static constexpr int mouseButtons = 7;

        Type type = Type::leftMouse;
        int subtype = 0;  ///< of a system-defined event
        std::int64_t data =
            0;  ///< of an event with `mouseButtons`: one bit for each button, the left one first
        MainThread::Uptime age{};  ///< how long ago it happened
        bool option = false;       ///< the key was down
        bool control = false;

        bool operator==(const Event&) const = default;
    };
    /// The icon's action has run, because a button went up over it, or because a program for people with
    /// disabilities pressed it.
    struct Click {
        std::optional<Event> event{};  ///< nothing when the program knows of no event
        unsigned pressedButtons = 0;   ///< the buttons that are down now, as in `Pointer`
        bool option = false;           ///< the key is down now
        bool control = false;
        bool isVoiceOverOn = false;  ///< VoiceOver uses Control and Option together

        bool operator==(const Click&) const = default;
    };
    /// A system symbol in the menu bar's own colour.
    struct Symbol {
        std::string name;
        std::string description;  ///< for VoiceOver

        bool operator==(const Symbol&) const = default;
    };
    /// The menu bar paints a drawing in its own colour and ignores its inks.
    using Image = std::variant<view::Drawing, Symbol>;

    virtual ~StatusItem() = default;

    /// Puts the icon into the menu bar. The system remembers its place by `autosaveName`. `label` is its
    /// name for VoiceOver.
    virtual void install(const std::string& autosaveName, const std::string& label,
                         std::function<void(Click)> clicked) = 0;

    virtual void setImage(const Image& image) = 0;
    virtual void setToolTip(const std::string& text) = 0;

    /// Opens a menu below the icon, unless one is open. The next click is a click again. May return only
    /// after the menu has closed. `closed` is called when it has closed, perhaps within this call.
    virtual void openMenu(view::Menu menu, std::function<void()> closed) = 0;
    [[nodiscard]] virtual bool isMenuOpen() const = 0;
};

}  // namespace velko
