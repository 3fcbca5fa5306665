#include "Velko/App/MoveToApplications.h"

#include <system_error>
#include <utility>

#include "Velko/App/Log.h"
#include "Velko/Ports/Dialogs.h"

namespace velko {

MoveToApplications::MoveToApplications(const AppPorts& ports, Log& log, std::filesystem::path bundle,
                                       const std::filesystem::path& to)
    : ports_(ports), log_(log), from_(std::move(bundle)), to_(to / from_.filename()) {}

void MoveToApplications::start() {
    if (question_.isPending()) {
        return;
    }
    std::error_code error;
    if (!std::filesystem::exists(to_, error)) {
        move(false);
        return;
    }
    question_ = ports_.dialogs.ask({.title = "There is a Velko in Applications already. Replace it?",
                                    .message = "The one that is there goes to the Trash.",
                                    .confirm = "Replace",
                                    .cancel = "Cancel"},
                                   [this](bool agreed) {
                                       if (agreed) {
                                           move(true);
                                       }
                                   });
}

void MoveToApplications::move(bool replaces) {
    if (replaces) {
        if (const auto trashed = ports_.application.moveToTrash(to_); !trashed) {
            fail(trashed.error());
            return;
        }
    }
    if (const auto copied = ports_.application.copy(from_, to_); !copied) {
        fail(copied.error());
        return;
    }
    ports_.application.openAnother(to_, [this](const Application::Outcome& outcome) { opened(outcome); });
}

/// The system may not let the old one be moved, for instance one that was never moved by hand. Then it stays.
void MoveToApplications::opened(const Application::Outcome& outcome) {
    if (!outcome) {
        fail(outcome.error());
        return;
    }
    log_.log("app", "moved to " + to_.string());
    if (const auto trashed = ports_.application.moveToTrash(from_); !trashed) {
        log_.log("app", "the old copy stays: " + trashed.error());
    }
    ports_.application.terminate();
}

void MoveToApplications::fail(const std::string& reason) {
    log_.log("app", "could not move to " + to_.string() + ": " + reason);
    ports_.dialogs.alert({.title = "Velko couldn't move to Applications.", .message = reason});
}

}  // namespace velko
