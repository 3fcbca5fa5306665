#include "Velko/Apps/ManagedWords.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>

#include "Velko/App/AppValues.h"
#include "Velko/App/Log.h"
#include "VelkoCore/Layout/ManagedLayout.h"

namespace velko {

namespace {

std::string counted(std::size_t count, std::string_view one) {
    return std::to_string(count) + " " + std::string(one) + (count == 1 ? "" : "s");
}

}  // namespace

std::string inWords(const ManagedLayout& managed) {
    return counted(managed.sections.size(), "app") + " and " +
           counted(managed.countOfPreferences(), "setting");
}

BundleIDs withoutManaged(const AppValues& values, const BundleIDs& apps, Log& log) {
    BundleIDs free;
    std::ranges::copy_if(apps, std::inserter(free, free.end()),
                         [&](const BundleID& bundleID) { return !values.managed.places(bundleID); });
    if (free.size() < apps.size()) {
        BundleIDs managed;
        std::ranges::set_difference(apps, free, std::inserter(managed, managed.end()));
        log.log("managed", "stays where it is: " + joined(managed));
    }
    return free;
}

}  // namespace velko
