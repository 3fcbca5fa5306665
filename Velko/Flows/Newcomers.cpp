#include "Velko/Flows/Newcomers.h"

#include <utility>
#include <vector>

#include "Velko/App/Joined.h"
#include "Velko/App/Log.h"
#include "Velko/Flows/NoteDeferral.h"
#include "VelkoCore/Time/Date.h"

namespace velko {

void Newcomers::admit(const BundleIDs& present, const BundleID& ownBundleID) {
    Layout layout = host_.values().layout;
    const std::vector<BundleID> newcomers =
        layout.admit({.present = present, .ownBundleID = ownBundleID, .now = floorToSeconds(clock_.date())});
    if (newcomers.empty()) {
        host_.edit(Saving::soon, [&](Layout& mine) { mine = std::move(layout); });
        return;
    }
    log_.log("inbox", "new icons, tucked until answered: " + joined(newcomers));
    host_.edit(Saving::nowUnlessBroken, [&](Layout& mine) { mine = std::move(layout); });
    note_.askAgain();
}

}  // namespace velko
