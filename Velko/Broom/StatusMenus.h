#pragma once

#include <memory>

#include "Velko/App/AppMenu.h"
#include "Velko/App/FaceParts.h"
#include "Velko/View/Menu.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// What the entries of the broom's two menus do. Main thread.
class MenuActions final : private NonCopyable {
 public:
    explicit MenuActions(const FaceParts& parts) : parts_(parts), updates_(parts.ports) {}

    // The main menu
    void openApp(const BundleID& bundleID);
    void openAccessibility() const;
    void showNoteFromMenu() const;
    void openSettings() const;
    void openSearch() const;
    void togglePresenting();
    void checkForUpdates();
    void quit();

    // Both menus
    void editLayout();

    /// Opens the page of the system's settings where the user allows icons in the menu bar.
    void openMenuBarSettings() const;

    // The debug menu
    void reloadLayout();
    void showAll();
    void toggleIconWatch();
    void copyLog();
    void openLog();
    void logAllowlist();
    void logProbe();
    /// Writes what each app costs into the log, and how many suggestions follow from that.
    void logUsage();
    /// Writes the items of the last scan into the log, and then the tree of the menu bar's host, once that
    /// is read.
    void dumpInventory();

 private:
    FaceParts parts_;
    Updates updates_;
    Task hostDump_;
};

/// The menus of the broom, made anew each time one opens. An entry that the user chooses after the actions
/// are gone does nothing. Main thread.
namespace StatusMenus {

[[nodiscard]] view::Menu mainMenu(const FaceParts& parts, const std::weak_ptr<MenuActions>& actions);

/// For people who look for a fault.
[[nodiscard]] view::Menu debugMenu(const FaceParts& parts, const std::weak_ptr<MenuActions>& actions);

}  // namespace StatusMenus

}  // namespace velko
