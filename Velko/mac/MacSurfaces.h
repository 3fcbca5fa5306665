#pragma once

#include "Velko/Ports/Surfaces.h"
#import "Velko/mac/FloatingPanel.h"
#import "Velko/mac/StandardWindow.h"

namespace velko {

/// Velko's panels and windows.
class MacSurfaces final : public Surfaces {
 public:
    /// Both outlive this.
    MacSurfaces(MainThread& mainThread, AppIcons& icons)
        : note_(mainThread, icons, FloatingPanel::Kind::note),
          shelf_(mainThread, icons, FloatingPanel::Kind::shelf),
          setup_(mainThread, icons),
          permissionGuide_(mainThread, icons, FloatingPanel::Kind::guide),
          settings_(mainThread, icons) {}

    [[nodiscard]] Surface& surface(Kind kind) override;
    [[nodiscard]] bool reducesMotion() const override;
    void announce(const std::string& words) override;

 private:
    FloatingPanel note_;
    FloatingPanel shelf_;
    StandardWindow setup_;
    FloatingPanel permissionGuide_;
    StandardWindow settings_;
};

}  // namespace velko
