#include "Velko/Apps/HiddenApps.h"

#include "Velko/App/AppController.h"
#include "VelkoCore/Layout/Section.h"

namespace velko {

HiddenApps hiddenApps(const AppController& controller) {
    HiddenApps hidden;
    for (const PresentApp& app : presentApps(controller.values())) {
        const Section section = controller.values().layout.section(app.bundleID);
        if (section != Section::bar && canBePlaced(controller, app.bundleID)) {
            (section == Section::tucked ? hidden.tucked : hidden.buried).push_back(app);
        }
    }
    return hidden;
}

}  // namespace velko
