#pragma once

#include <memory>
#include <vector>

#include "Velko/Ports/Surfaces.h"
#include "Velko/mac/Images.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

/// Velko's panels and windows.
class MacSurfaces final : public Surfaces {
 public:
    /// Both outlive this.
    MacSurfaces(MainThread& mainThread, AppIcons& icons);

    [[nodiscard]] Surface& surface(Kind kind) override;
    [[nodiscard]] bool reducesMotion() const override;
    void announce(const std::string& words) override;

 private:
    std::vector<std::unique_ptr<Surface>> surfaces_;  ///< in the order of `Kind`
};

}  // namespace velko
