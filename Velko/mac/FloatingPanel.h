#pragma once

#import <AppKit/AppKit.h>

#include <optional>

#import "Velko/mac/MacSurface.h"
#include "Velko/mac/PanelMotion.h"

@class VLKSurfacePanel;

namespace velko {

/// A panel without a title bar above other windows, on every desktop. It does not bring Velko forward.
class FloatingPanel final : public MacSurface {
 public:
    enum class Kind {
        note,   ///< takes the keyboard, goes on a click elsewhere, and has an arrow
        shelf,  ///< takes the keyboard, and goes on a click elsewhere
        guide,  ///< leaves the keyboard where it is, and stays
    };

    /// All outlive this.
    FloatingPanel(MainThread& mainThread, AppIcons& icons, Kind kind)
        : MacSurface(mainThread, icons), kind_(kind) {}

    void move(const Place& place) override;

 private:
    [[nodiscard]] bool present(const Opening& opening, VLKTreeView* tree) override;
    void resize(NSSize size) override;
    void dismantle() override;
    [[nodiscard]] NSWindow* window() const override;
    [[nodiscard]] bool goesOnEscape() const override { return isTransient(); }

    [[nodiscard]] bool isTransient() const noexcept { return kind_ != Kind::guide; }
    [[nodiscard]] NSRect target() const;
    void moveToTarget();
    void pointArrow(NSRect frame);

    Kind kind_;
    VLKSurfacePanel* panel_ = nil;
    NSView* content_ = nil;
    std::optional<Place> place_;
    std::optional<PanelMotion> motion_;
};

}  // namespace velko
