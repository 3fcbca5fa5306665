#include "Velko/Setup/TidyOutcome.h"

#include "Velko/App/AppController.h"
#include "Velko/Apps/HiddenApps.h"

namespace velko {

TidyOutcome TidyOutcome::of(const AppController& controller) {
    const AppValues& values = controller.values();
    TidyOutcome outcome{.isAllKept = hiddenApps(controller).areNone(),
                        .isRefused = values.isRefused && values.health().isOk()};
    for (const MenuBarItem& item : values.items) {
        if (controller.engine().current().hides(item.bundleID)) {
            const bool isBuried = values.layout.section(item.bundleID) == Section::buried;
            ++(isBuried ? outcome.buried : outcome.tucked);
        }
    }
    return outcome;
}

}  // namespace velko
