#pragma once

#include <functional>
#include <string>
#include <variant>

#include "Velko/View/Drawing.h"
#include "Velko/View/Menu.h"

namespace velko {

/// Velko's own icon in the menu bar. There is one, from the first call on. Main thread.
class StatusItem {
 public:
    /// A button went up over the icon.
    struct Click {
        bool isRight = false;
        bool option = false;  ///< the key was down, in the event or on the keyboard
        bool control = false;

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

    StatusItem() = default;
    StatusItem(const StatusItem&) = delete;
    StatusItem& operator=(const StatusItem&) = delete;
    virtual ~StatusItem() = default;

    /// Puts the icon into the menu bar. The system remembers its place by `autosaveName`. `label` is its
    /// name for VoiceOver.
    virtual void install(const std::string& autosaveName, const std::string& label,
                         std::function<void(Click)> clicked) = 0;

    virtual void setImage(const Image& image) = 0;
    virtual void setToolTip(const std::string& text) = 0;

    /// Opens a menu below the icon; the next click is a click again. May return only after it has closed.
    virtual void openMenu(view::Menu menu) = 0;
};

}  // namespace velko
