#pragma once

#include <functional>

#include "Velko/App/FaceParts.h"
#include "Velko/App/Updates.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// What the entries of the broom's two menus do. Main thread.
class MenuActions final : private NonCopyable {
 public:
    explicit MenuActions(const FaceParts& parts) : parts_(parts), updates_(parts.ports) {}

    std::function<void()> onSettings;  ///< opens the settings
    std::function<void()> onNote;      ///< opens the note

    // The main menu
    void openApp(const BundleID& bundleID);
    void openAccessibility() const;
    void showNoteFromMenu() const;
    void openSettings() const;
    void checkForUpdates();
    void quit();

    // Both
    void editLayout();

    /// The system's settings of the menu bar, where icons are allowed.
    void openMenuBarSettings() const;

    // The debug menu
    void reloadLayout();
    void showAll();
    void toggleIconWatch();
    void copyLog();
    void openLog();
    void logAllowlist();
    void logProbe();
    /// What each app costs, and what the autopilot makes of it.
    void logUsage();
    /// The items of the last scan; and as soon as it is read, the tree of the menu bar's host.
    void dumpInventory();

 private:
    FaceParts parts_;
    Updates updates_;
    Task hostDump_;
};

}  // namespace velko
