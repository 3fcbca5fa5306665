#pragma once

#include <optional>
#include <string>

#include "Velko/Ports/Desktop.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoEngine/Ports/Platform.h"

namespace velko {

class AppController;
class Log;
class SortSession;
struct ImportedLayout;

/// What a face tells the program when it concerns other faces. Main thread.
class FaceHost {
 public:
    /// The broom was clicked. Told before the click does anything else.
    virtual void onClick() = 0;
    /// The user wants the note.
    virtual void onNote() = 0;
    /// The user wants the settings.
    virtual void onSettings() = 0;
    /// The user wants the settings of one app.
    virtual void onSettingsOf(const BundleID& bundleID) = 0;
    /// The user wants to search the menu bar, perhaps for a text already known.
    virtual void onSearch(const std::string& typed) = 0;
    /// The user wants to go through the cards again.
    virtual void onResort() = 0;
    /// The user wants to give the permission that is missing.
    virtual void onPermission() = 0;
    /// The user wants Velko to be in the Applications folder.
    virtual void onMoveToApplications() = 0;
    /// A window has opened or closed.
    virtual void onVisibilityChange() = 0;

    /// The apps to sort, with what is suggested for each.
    [[nodiscard]] virtual SortSession makeSession() = 0;
    /// What another organiser left behind. To be asked right after `makeSession`, at the first run only.
    [[nodiscard]] virtual std::optional<ImportedLayout> imported() const = 0;

 protected:
    ~FaceHost() = default;
};

/// What the controller of a surface needs. It calls the app controller directly, and tells the host what
/// concerns other surfaces. All of it outlives the surface.
struct FaceParts {
    AppController& controller;
    Platform platform;
    AppPorts ports;
    Log& log;
    FaceHost& host;
};

}  // namespace velko
