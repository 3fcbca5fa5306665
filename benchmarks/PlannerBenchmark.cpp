#include <benchmark/benchmark.h>
#include <string>

#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Visibility/RevealState.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"

namespace velko {
namespace {

/// A layout that knows `count` apps, of which most are running, spread over the sections.
void planApps(benchmark::State& bench) {
    Layout layout;
    BundleIDs inventory;
    for (std::int64_t app = 0; app < bench.range(0); ++app) {
        const BundleID bundleID = "com.example.vendor" + std::to_string(app * 7919 % 10007) + ".menu-app";
        if (app % 5 != 0) {
            inventory.insert(bundleID);
        }
        layout.sections[bundleID] = allSections.at(static_cast<std::size_t>(app) % allSections.size());
    }
    const RevealState state = RevealState::peeking("com.example.peeking", RevealState::revealed());
    const BundleID own = "app.velko";
    const BundleIDs nobody;
    for (auto step : bench) {
        benchmark::DoNotOptimize(AllowlistPlanner::plan({.layout = layout,
                                                         .state = state,
                                                         .inventory = inventory,
                                                         .ownBundleID = own,
                                                         .shareKeep = nobody,
                                                         .poppedOut = nobody}));
    }
    bench.SetComplexityN(bench.range(0));
}

BENCHMARK(planApps)->Arg(10)->Arg(40)->Arg(200)->Arg(1000)->Arg(10000)->Complexity(benchmark::oNLogN);

}  // namespace
}  // namespace velko
