#pragma once

#include <cstddef>

#include "Velko/App/FaceParts.h"
#include "Velko/Broom/StatusMenus.h"
#include "Velko/Ports/Surfaces.h"
#include "Velko/Settings/AppList.h"
#include "Velko/Settings/EarlierLayoutsWindow.h"
#include "Velko/Settings/KeysPage.h"
#include "Velko/Settings/PresentingPage.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class BroomFrame;

/// The window with the settings. Every control acts at once, and the window always shows what holds now. Main
/// thread.
class SettingsController final : private NonCopyable {
 public:
    /// `broom` outlives the settings.
    SettingsController(const FaceParts& parts, BroomFrame& broom);

    /// Opens the window or brings it to the front.
    void show();
    /// Does the same with the page that lists this app.
    void showApp(const BundleID& bundleID);
    [[nodiscard]] bool isShown() const { return window_.isOpen(); }

 private:
    void update();
    void closed();
    [[nodiscard]] view::Node tree();
    void turnTo(std::size_t page);
    void leavePage();

    FaceParts parts_;
    BroomFrame& broom_;
    OpenSurface window_;
    MenuActions menu_;
    KeysPage keys_;
    PresentingPage presenting_;
    AppList apps_;
    EarlierLayoutsWindow earlier_;
    std::size_t page_ = 0;  ///< the one that is open, or was open last
    Subscription broomMoves_;
    bool saysOutOfSight_ = false;     ///< in the open window
    bool hasSaidOutOfSight_ = false;  ///< in a window that has closed: once is enough
};

}  // namespace velko
