#pragma once

#import <AppKit/AppKit.h>

#import "Velko/mac/MacSurfaces.h"

@class VLKPageToolbar, VLKSurfaceDelegate;

namespace velko {

/// A window with a title. It opens in the middle of its screen, or where it was last. While its tree has a
/// list that grows, the user can make it higher.
class StandardWindow final : public MacSurface {
 public:
    /// All outlive this.
    StandardWindow(MainThread& mainThread, AppIcons& icons, const Surfaces::Traits& traits)
        : MacSurface(mainThread, icons), traits_(traits) {}

    void raise() override;

 private:
    [[nodiscard]] bool present(const Opening& opening, VLKTreeView* tree) override;
    void resize(NSSize size) override;
    void follow(const view::Node& content) override;
    void dismantle() override;
    [[nodiscard]] NSWindow* window() const override { return window_; }
    [[nodiscard]] bool goesOnEscape() const override { return false; }

    void setHeight(CGFloat height);
    void goToLastPlace();
    void userResized();

    const Surfaces::Traits& traits_;
    NSWindow* window_ = nil;
    VLKPageToolbar* pages_ = nil;
    NSSize wanted_{};           ///< what the tree needs
    CGFloat chosenHeight_ = 0;  ///< of the content, as the user has made it; 0: never
    bool canGrow_ = false;
    VLKSurfaceDelegate* delegate_ = nil;
};

}  // namespace velko
