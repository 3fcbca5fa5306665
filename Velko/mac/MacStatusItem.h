#pragma once

#import <AppKit/AppKit.h>

#include <optional>

#include "Velko/Ports/StatusItem.h"
#include "Velko/mac/Images.h"

@class VLKStatusItemTarget;

namespace velko {

/// An item in the system's status bar.
class MacStatusItem final : public StatusItem {
 public:
    /// `icons` outlives this.
    explicit MacStatusItem(AppIcons& icons) : icons_(icons) {}

    void install(const std::string& autosaveName, const std::string& label,
                 std::function<void(Click)> clicked) override;
    void setImage(const Image& image) override;
    void setToolTip(const std::string& text) override;
    void openMenu(view::Menu menu, std::function<void()> closed) override;
    [[nodiscard]] bool isMenuOpen() const override;

    /// The frame of the icon's window, with the origin at the bottom left of the primary screen; nothing
    /// while it has none.
    [[nodiscard]] std::optional<Rect> windowFrame() const;
    void closeMenu();
    /// Takes the icon out of the menu bar.
    void remove();

 private:
    AppIcons& icons_;
    NSStatusItem* item_ = nil;
    VLKStatusItemTarget* target_ = nil;
};

}  // namespace velko
