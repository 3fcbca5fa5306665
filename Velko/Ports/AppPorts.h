#pragma once

namespace velko {

class Dialogs;
class LoginItem;

/// What the app needs of the machine beyond the engine's `Platform`: one reference per port, handed over
/// once, outliving everything.
struct AppPorts {
    Dialogs& dialogs;
    LoginItem& loginItem;
};

}  // namespace velko
