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
    /// All outlive this.
    FloatingPanel(MainThread& mainThread, AppIcons& icons, const Surfaces::Traits& traits)
        : MacSurface(mainThread, icons), traits_(traits) {}

    void move(const Place& place) override;

 private:
    [[nodiscard]] bool present(const Opening& opening, VLKTreeView* tree) override;
    void resize(NSSize size) override;
    void dismantle() override;
    [[nodiscard]] NSWindow* window() const override;
    [[nodiscard]] bool goesOnEscape() const override { return isTransient(); }

    [[nodiscard]] bool isTransient() const noexcept { return traits_.isTransient(); }
    [[nodiscard]] bool hasArrow() const noexcept { return traits_.form == Surfaces::Form::panelWithArrow; }
    [[nodiscard]] NSRect target() const;
    void moveToTarget();
    void pointArrow(NSRect frame);

    const Surfaces::Traits& traits_;
    VLKSurfacePanel* panel_ = nil;
    NSView* content_ = nil;
    std::optional<Place> place_;
    std::optional<PanelMotion> motion_;
};

}  // namespace velko
