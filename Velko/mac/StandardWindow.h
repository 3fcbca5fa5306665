#pragma once

#import <AppKit/AppKit.h>

#import "Velko/mac/MacSurfaces.h"

@class VLKSurfaceDelegate;

namespace velko {

/// A window with a title, in the middle of its screen.
class StandardWindow final : public MacSurface {
 public:
    /// Both outlive this.
    StandardWindow(MainThread& mainThread, AppIcons& icons) : MacSurface(mainThread, icons) {}

    void raise() override;

 private:
    [[nodiscard]] bool present(const Opening& opening, VLKTreeView* tree) override;
    void resize(NSSize size) override;
    void dismantle() override;
    [[nodiscard]] NSWindow* window() const override { return window_; }
    [[nodiscard]] bool goesOnEscape() const override { return false; }

    NSWindow* window_ = nil;
    VLKSurfaceDelegate* delegate_ = nil;
};

}  // namespace velko
