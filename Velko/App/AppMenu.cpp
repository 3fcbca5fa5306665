#include "Velko/App/AppMenu.h"

#include <utility>

#include "Velko/App/AppController.h"
#include "Velko/Ports/Desktop.h"
#include "Velko/Ports/Dialogs.h"

namespace velko::AppMenu {

namespace {

Entry line() {
    return {};
}

Menu application(const Actions& actions) {
    return {
        .title = "Velko",
        .entries = {{.title = "About Velko", .command = Command::about},
                    line(),
                    {.title = "Settings…", .key = ',', .action = actions.openSettings},
                    line(),
                    {.title = "Hide Velko", .key = 'h', .command = Command::hide},
                    {.title = "Hide Others", .key = 'h', .withOption = true, .command = Command::hideOthers},
                    {.title = "Show All", .command = Command::showAll},
                    line(),
                    {.title = "Quit Velko", .key = 'q', .command = Command::quit}}};
}

/// "Undo Tuck Slack", or the word alone where there is nothing.
State stateOf(std::string word, const UndoHistory::Change* change) {
    const bool isThere = change != nullptr;
    return {.title = isThere ? std::move(word) + " " + change->title : std::move(word), .isEnabled = isThere};
}

Menu edit(const Actions& actions) {
    AppController& controller = actions.controller;
    return {.title = "Edit",
            .entries = {
                {.title = "Undo",
                 .key = 'z',
                 .command = Command::undo,
                 .action = [&controller] { controller.undo(); },
                 .state = [&controller] { return stateOf("Undo", controller.values().history.undoable()); }},
                {.title = "Redo",
                 .key = 'z',
                 .withShift = true,
                 .command = Command::redo,
                 .action = [&controller] { controller.redo(); },
                 .state = [&controller] { return stateOf("Redo", controller.values().history.redoable()); }},
                line(),
                {.title = "Cut", .key = 'x', .command = Command::cut},
                {.title = "Copy", .key = 'c', .command = Command::copy},
                {.title = "Paste", .key = 'v', .command = Command::paste},
                {.title = "Select All", .key = 'a', .command = Command::selectAll}}};
}

Menu help(const Actions& actions) {
    Entry documentation{.title = "Velko Documentation", .action = actions.openDocumentation};
    if (actions.controller.info().documentation.empty()) {
        documentation.state = [] {
            return State{.title = "Velko Documentation (not named in this build)", .isEnabled = false};
        };
    }
    return {.title = "Help",
            .entries = {std::move(documentation),
                        {.title = "Copy Diagnostics", .action = actions.copyDiagnostics}},
            .role = Menu::Role::help};
}

}  // namespace

std::vector<Menu> menus(const Actions& actions) {
    return {application(actions),
            {.title = "File", .entries = {{.title = "Close", .key = 'w', .command = Command::closeWindow}}},
            edit(actions),
            {.title = "Window",
             .entries = {{.title = "Minimize", .key = 'm', .command = Command::minimizeWindow},
                         {.title = "Zoom", .command = Command::zoomWindow},
                         line(),
                         {.title = "Bring All to Front", .command = Command::bringAllToFront}},
             .role = Menu::Role::windows},
            help(actions)};
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
