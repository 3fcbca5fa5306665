#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>

#include "Velko/Broom/MenuActions.h"
#include "Velko/FaceParts.h"
#include "Velko/Ports/Surfaces.h"
#include "Velko/Settings/SettingsPages.h"
#include "VelkoCore/Section.h"
#include "VelkoEngine/Ports/Subscription.h"

namespace velko {

/// The settings' window. Every control acts at once, and the window shows what holds. Main thread.
class SettingsController final {
 public:
    explicit SettingsController(const FaceParts& parts);
    SettingsController(const SettingsController&) = delete;
    SettingsController& operator=(const SettingsController&) = delete;
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
    Surface& window_;
    MenuActions menu_;
    std::size_t page_ = 0;
    std::optional<Section> listed_;          ///< which apps the list shows; absent: all
    std::shared_ptr<Subscription> changes_;  ///< from the opening until it is known to have closed
};

}  // namespace velko
