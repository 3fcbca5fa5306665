#include "Velko/Apps/EmptyList.h"

#include "Velko/App/AppValues.h"

namespace velko {

std::string whyNoApps(const AppValues& values) {
    if (values.problems.engineUnavailable) {
        return "Velko can't look at your menu bar: this macOS build isn't supported.";
    }
    if (values.problems.trustMissing) {
        return "Velko can't look at your menu bar until you give it permission.";
    }
    if (!values.inventoryLoaded) {
        return "Looking at your menu bar…";
    }
    return "No app has an icon in your menu bar right now. When one moves in, it shows up here.";
}

}  // namespace velko
