#include "Velko/AppMenu.h"

namespace velko::AppMenu {

std::vector<Menu> menus() {
    return {
        {.title = "Velko", .entries = {{.title = "Quit Velko", .key = 'q', .command = Command::quit}}},
        {.title = "File", .entries = {{.title = "Close", .key = 'w', .command = Command::closeWindow}}},
        {.title = "Edit",
         .entries = {{.title = "Copy", .key = 'c', .command = Command::copy},
                     {.title = "Select All", .key = 'a', .command = Command::selectAll}}},
        {.title = "Window",
         .entries = {{.title = "Minimize", .key = 'm', .command = Command::minimizeWindow}}},
    };
}

}  // namespace velko::AppMenu
