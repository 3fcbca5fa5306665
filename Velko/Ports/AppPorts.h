#pragma once

namespace velko {

class Application;
class Defaults;
class Dialogs;
class LoginItem;
class Pasteboard;
class StatusItem;
class Surfaces;
class Updater;

/// What the app needs of the machine beyond the engine's `Platform`: one reference per port, handed over
/// once, outliving everything.
struct AppPorts {
    Application& application;
    Defaults& defaults;
    Dialogs& dialogs;
    LoginItem& loginItem;
    Pasteboard& pasteboard;
    StatusItem& statusItem;
    Surfaces& surfaces;
    Updater& updater;
};

}  // namespace velko
