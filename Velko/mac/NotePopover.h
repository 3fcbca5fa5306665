#pragma once

#import "Velko/mac/MacStatusItem.h"
#import "Velko/mac/MacSurface.h"
#import "Velko/mac/SurfaceDelegate.h"

namespace velko {

/// A popover below the status item's icon.
class NotePopover final : public MacSurface {
 public:
    /// All outlive this.
    NotePopover(MainThread& mainThread, AppIcons& icons, const MacStatusItem& statusItem)
        : MacSurface(mainThread, icons), statusItem_(statusItem) {}

 private:
    [[nodiscard]] bool present(const Opening& opening, VLKTreeView* tree) override;
    void resize(NSSize size) override;
    void dismantle() override;
    [[nodiscard]] NSWindow* window() const override;
    [[nodiscard]] bool goesOnEscape() const override { return true; }

    const MacStatusItem& statusItem_;
    NSPopover* popover_ = nil;
    VLKSurfaceDelegate* delegate_ = nil;
};

}  // namespace velko
