#include "Velko/App/Updates.h"

#include "Velko/Ports/Desktop.h"
#include "Velko/Ports/Dialogs.h"

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
