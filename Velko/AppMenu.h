#pragma once

#include <string>
#include <vector>

/// The menus at the top of the screen while one of Velko's windows has the keyboard. Without them the keys
/// that every Mac user knows would do nothing there.
namespace velko::AppMenu {

enum class Command { quit, closeWindow, minimizeWindow, copy, selectAll };

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
