#pragma once

#import <AppKit/AppKit.h>

#include <optional>

#import "Velko/mac/MacSurface.h"
#include "Velko/mac/PanelMotion.h"

@class VLKSurfacePanel;

namespace velko {

/// A panel without a title above other windows, on every desktop. It does not bring Velko forward.
class FloatingPanel final : public MacSurface {
 public:
    enum class Kind {
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
    [[nodiscard]] bool goesOnEscape() const override { return kind_ == Kind::shelf; }

    [[nodiscard]] NSRect target(NSSize size) const;

    Kind kind_;
    VLKSurfacePanel* panel_ = nil;
    std::optional<Place> place_;
    std::optional<PanelMotion> motion_;
};

}  // namespace velko
