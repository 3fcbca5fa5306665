#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>

#include "Velko/App/FaceParts.h"
#include "Velko/Broom/MenuActions.h"
#include "Velko/Ports/Surfaces.h"
#include "Velko/Settings/SettingsPages.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class BroomFrame;

/// The settings' window. Every control acts at once, and the window shows what holds. Main thread.
class SettingsController final : private NonCopyable {
 public:
    /// `broom` outlives the settings.
    SettingsController(const FaceParts& parts, BroomFrame& broom);
    ~SettingsController();

    /// Opens the window or brings it to the front.
    void show();
    [[nodiscard]] bool isShown() const { return window_.isOpen(); }

    // To be set before `show`.

    std::function<void()> onVisibilityChange;
    /// The user wants to go through the cards again.
    std::function<void()> onResort;
    /// The user wants to give the permission that is missing.
    std::function<void()> onPermission;

 private:
    void update();
    void closed();
    [[nodiscard]] view::Node tree();
    [[nodiscard]] view::Node page();
    [[nodiscard]] SettingsPages::Actions actions();

    FaceParts parts_;
    BroomFrame& broom_;
    Surface& window_;
    MenuActions menu_;
    std::size_t page_ = 0;
    std::optional<Section> listed_;          ///< which apps the list shows; absent: all
    std::shared_ptr<Subscription> changes_;  ///< from the opening until it is known to have closed
    Subscription broomMoves_;
    bool saysOutOfSight_ = false;     ///< in the window that is open
    bool hasSaidOutOfSight_ = false;  ///< in one that has closed: once is enough
};

}  // namespace velko
