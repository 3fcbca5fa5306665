#include "Velko/App/AppMenu.h"

#include "Velko/Ports/Desktop.h"
#include "Velko/Ports/Dialogs.h"

namespace velko::AppMenu {

std::vector<Menu> menus() {
    return {
        {.title = "Velko",
         .entries = {{.title = "Hide Velko", .key = 'h', .command = Command::hide},
                     {.title = "Quit Velko", .key = 'q', .command = Command::quit}}},
        {.title = "File", .entries = {{.title = "Close", .key = 'w', .command = Command::closeWindow}}},
        {.title = "Edit",
         .entries = {{.title = "Undo", .key = 'z', .command = Command::undo},
                     {.title = "Cut", .key = 'x', .command = Command::cut},
                     {.title = "Copy", .key = 'c', .command = Command::copy},
                     {.title = "Paste", .key = 'v', .command = Command::paste},
                     {.title = "Select All", .key = 'a', .command = Command::selectAll}}},
        {.title = "Window",
         .entries = {{.title = "Minimize", .key = 'm', .command = Command::minimizeWindow}}},
    };
}

}  // namespace velko::AppMenu

namespace velko {

std::optional<std::string> Updates::whyUnavailable() const {
    return ports_.updater.whyUnavailable();
}

void Updates::checkForUpdates() {
    ports_.application.activate();
    if (!ports_.updater.checkForUpdates()) {
        ports_.dialogs.alert(
            {.title = "Velko couldn't look for updates.", .message = "The updater doesn't start."});
    }
}

}  // namespace velko
