#pragma once

#include "Velko/Ports/Surfaces.h"
#import "Velko/mac/FloatingPanel.h"
#import "Velko/mac/NotePopover.h"
#import "Velko/mac/StandardWindow.h"

namespace velko {

/// Velko's popover, panels and windows.
class MacSurfaces final : public Surfaces {
 public:
    /// All outlive this.
    MacSurfaces(MainThread& mainThread, AppIcons& icons, const MacStatusItem& statusItem)
        : note_(mainThread, icons, statusItem),
          shelf_(mainThread, icons, FloatingPanel::Kind::shelf),
          setup_(mainThread, icons),
          permissionGuide_(mainThread, icons, FloatingPanel::Kind::guide),
          settings_(mainThread, icons) {}

    [[nodiscard]] Surface& surface(Kind kind) override;
    [[nodiscard]] bool reducesMotion() const override;

 private:
    NotePopover note_;
    FloatingPanel shelf_;
    StandardWindow setup_;
    FloatingPanel permissionGuide_;
    StandardWindow settings_;
};

}  // namespace velko
