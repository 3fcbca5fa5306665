#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Velko/Ports/Desktop.h"

namespace velko {

class AppController;

}  // namespace velko

/// The menus at the top of the screen while one of Velko's windows has the keyboard. Without them the keys
/// that every Mac user knows would do nothing there, in panels of the system's with fields to type in either.
namespace velko::AppMenu {

/// What the system does by itself, with the window or the field that has the keyboard.
enum class Command {
    about,
    hide,
    hideOthers,
    showAll,
    quit,
    closeWindow,
    minimizeWindow,
    zoomWindow,
    bringAllToFront,
    undo,
    redo,
    cut,
    copy,
    paste,
    selectAll,
};

/// How an entry looks when its menu opens.
struct State {
    std::string title;
    bool isEnabled = true;
};

struct Entry {
    std::string title{};  ///< empty: a line between entries
    char key = 0;         ///< pressed together with Command; 0: none
    bool withOption = false;
    bool withShift = false;
    std::optional<Command> command{};
    /// What Velko does. An entry with a command too does it where what has the keyboard has nothing to undo
    /// or to redo.
    std::function<void()> action{};
    std::function<State()> state{};  ///< of the action; absent: the title, enabled
};

struct Menu {
    enum class Role { ordinary, windows, help };

    std::string title{};
    std::vector<Entry> entries{};
    Role role = Role::ordinary;  ///< what the system adds to it
};

/// What the entries do. All of it outlives the menus.
struct Actions {
    AppController& controller;
    std::function<void()> openSettings;
    std::function<void()> openDocumentation;
    std::function<void()> copyDiagnostics;
};

[[nodiscard]] std::vector<Menu> menus(const Actions& actions);

}  // namespace velko::AppMenu

namespace velko {

/// "Check for Updates…", wherever it stands. Main thread.
class Updates final {
 public:
    explicit Updates(const AppPorts& ports) : ports_(ports) {}

    /// Why the user can't look for updates, in words; nothing when they can.
    [[nodiscard]] std::optional<std::string> whyUnavailable() const;

    /// Comes to the front and has the updater look for a newer version.
    void checkForUpdates();

 private:
    AppPorts ports_;
};

}  // namespace velko
