#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "Velko/App/AppController.h"
#include "Velko/App/AppMenu.h"
#include "Velko/App/FaceParts.h"
#include "Velko/App/MoveToApplications.h"
#include "Velko/App/SingleInstance.h"
#include "Velko/Broom/BroomFrame.h"
#include "Velko/Broom/HoverWatcher.h"
#include "Velko/Broom/StatusItemController.h"
#include "Velko/Commands/CommandDesk.h"
#include "Velko/Message/MessageController.h"
#include "Velko/Search/SearchController.h"
#include "Velko/Settings/SettingsController.h"
#include "Velko/Setup/PermissionGuide.h"
#include "Velko/Setup/SetupController.h"
#include "Velko/Shelf/ShelfController.h"
#include "VelkoCore/Import/Importers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// The program as the desktop starts, addresses and ends it: it makes the controller and all surfaces,
/// and wires them together. Main thread only; one for the program's life.
class AppDelegate final : private FaceHost, private NonCopyable {
 public:
    /// What the program is made of. The references outlive it.
    struct Parts {
        AppController::Parts controller;
        const PropertyListReader& propertyLists;
        std::filesystem::path homeFolder;  ///< where other organisers' preferences are looked for
    };

    explicit AppDelegate(Parts parts);

    // What the desktop tells the program.

    /// Once, when the program may show something. It does, unless another one works on the layout.
    void didFinishLaunching();
    /// Once, before the process ends: shows every icon again.
    void willTerminate();
    /// The user has opened the program although it runs.
    void reopen(bool hasVisibleWindows);
    /// The user has opened a file of the program's own kind.
    void openFile(const std::filesystem::path& file);
    /// Opens the search with a text in its field, which may be empty. An open search takes over the text.
    void openSearch(const std::string& typed);

    /// Somebody has opened an address of the program's own scheme.
    void openAddress(const std::string& address);

    /// The menus at the top of the screen. This outlives them.
    [[nodiscard]] std::vector<AppMenu::Menu> menus();

    [[nodiscard]] AppController& controller() noexcept { return controller_; }

 private:
    // FaceHost
    void onClick() override;
    void onNote() override;
    void onSettings() override { openSettings(); }
    void onSettingsOf(const BundleID& bundleID) override { settings().showApp(bundleID); }
    void onSearch(const std::string& typed) override { openSearch(typed); }
    void onResort() override { openSetup(); }
    void onPermission() override { openPermission(); }
    void onMoveToApplications() override { move_.start(); }
    void onVisibilityChange() override;
    [[nodiscard]] SortSession makeSession() override;
    [[nodiscard]] std::optional<ImportedLayout> imported() const override { return lastImport_; }

    void run();
    void wireSurfaces(StatusItemController& statusItem);
    void sync();
    void applyLoginDefault();
    void openSettings();
    void openSetup();
    void openFirstSetup();
    void openPermission();
    void updateActivationPolicy();
    [[nodiscard]] SettingsController& settings();
    void lookForAnotherOrganiser();
    void copyDiagnostics();

    Platform platform_;
    AppPorts ports_;
    Log& log_;
    const PropertyListReader& propertyLists_;
    std::filesystem::path homeFolder_;
    SingleInstance instance_;
    AppController controller_;
    MoveToApplications move_;
    FaceParts faceParts_;
    BroomFrame broomFrame_;
    ShelfController shelf_;
    SearchController search_;
    MessageController message_;
    SetupController setup_;
    std::optional<StatusItemController> statusItem_;
    std::optional<HoverWatcher> hover_;
    std::optional<SettingsController> settings_;
    std::optional<ImportedLayout> lastImport_;
    CommandDesk commands_;
    std::vector<std::string> addresses_;  ///< opened before the program knew whether it may run
    bool isRunning_ = false;
    std::optional<PermissionGuide> debugGuide_;  ///< while it helps with what the settings ask for
    Task setupWait_;
    Task guideEnd_;
    Subscription changes_;
    Subscription broomMoves_;
};

}  // namespace velko
