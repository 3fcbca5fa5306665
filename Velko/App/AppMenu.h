#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Velko/Ports/Desktop.h"

/// The menus at the top of the screen while one of Velko's windows has the keyboard. Without them the keys
/// that every Mac user knows would do nothing there, in panels of the system's with fields to type in either.
namespace velko::AppMenu {

enum class Command { hide, quit, closeWindow, minimizeWindow, undo, cut, copy, paste, selectAll };

struct Entry {
    std::string title;
    char key = 0;  ///< pressed together with Command
    Command command = Command::quit;
};

struct Menu {
    std::string title;
    std::vector<Entry> entries;
};

[[nodiscard]] std::vector<Menu> menus();

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
