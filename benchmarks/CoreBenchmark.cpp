#include <benchmark/benchmark.h>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Layout/LayoutFormats.h"
#include "VelkoCore/Search/AppSearch.h"
#include "VelkoCore/Visibility/RevealState.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"

namespace velko {
namespace {

using std::chrono::days;

/// A layout of `count` apps in daily use: sorted, seen, and clicked on each of the days that are kept.
Layout layoutOf(std::int64_t count) {
    constexpr int clickDays = 21;
    constexpr Date today = std::chrono::sys_days{std::chrono::year{2026} / 3 / 1};
    Layout layout;
    BundleIDs seen;
    for (std::int64_t app = 0; app < count; ++app) {
        const BundleID bundleID = "com.example.vendor" + std::to_string(app * 7919 % 10007) + ".menu-app";
        layout.sections[bundleID] = allSections.at(static_cast<std::size_t>(app) % allSections.size());
        seen.insert(bundleID);
        layout.firstSeen[bundleID] = today - days{100};
        layout.lastClicked[bundleID] = today;
        for (int day = 0; day < clickDays; ++day) {
            layout.clickDays[bundleID].push_back(today - days{day});
        }
    }
    layout.seenApps = std::move(seen);
    return layout;
}

void decode(benchmark::State& bench) {
    const std::string text = encodeLayout(layoutOf(bench.range(0)));
    for (auto step : bench) {
        benchmark::DoNotOptimize(decodeLayout(text));
    }
    bench.SetComplexityN(bench.range(0));
    bench.SetBytesProcessed(bench.iterations() * static_cast<std::int64_t>(text.size()));
}

void encode(benchmark::State& bench) {
    const Layout layout = layoutOf(bench.range(0));
    for (auto step : bench) {
        benchmark::DoNotOptimize(encodeLayout(layout));
    }
    bench.SetComplexityN(bench.range(0));
}

/// What no reader and writer of such a file can do without, to measure the two above by.
void bareParse(benchmark::State& bench) {
    const std::string text = encodeLayout(layoutOf(bench.range(0)));
    for (auto step : bench) {
        benchmark::DoNotOptimize(nlohmann::json::parse(text));
    }
}

void bareDump(benchmark::State& bench) {
    const auto json = nlohmann::json::parse(encodeLayout(layoutOf(bench.range(0))));
    for (auto step : bench) {
        benchmark::DoNotOptimize(json.dump(2));
    }
}

BENCHMARK(bareParse)->Arg(10000);
BENCHMARK(bareDump)->Arg(10000);
BENCHMARK(decode)->Arg(10)->Arg(40)->Arg(200)->Arg(1000)->Arg(10000)->Complexity();
BENCHMARK(encode)->Arg(10)->Arg(40)->Arg(200)->Arg(1000)->Arg(10000)->Complexity();

/// A layout that knows `count` apps, of which most are running, spread over the sections.
struct Sorted {
    explicit Sorted(std::int64_t count) {
        for (std::int64_t app = 0; app < count; ++app) {
            const BundleID bundleID = "com.example.vendor" + std::to_string(app * 7919 % 10007) + ".menu-app";
            if (app % 5 != 0) {
                inventory.insert(bundleID);
            }
            layout.sections[bundleID] = allSections.at(static_cast<std::size_t>(app) % allSections.size());
        }
    }

    [[nodiscard]] VisibilityPlan plan() const {
        return AllowlistPlanner::plan({.layout = layout,
                                       .state = state,
                                       .inventory = inventory,
                                       .ownBundleID = own,
                                       .shareKeep = nobody,
                                       .poppedOut = nobody});
    }

    Layout layout;
    BundleIDs inventory;
    RevealState state = RevealState::peeking("com.example.peeking", RevealState::revealed());
    BundleID own = "app.velko";
    BundleIDs nobody;
};

void planApps(benchmark::State& bench) {
    const Sorted sorted(bench.range(0));
    for (auto step : bench) {
        benchmark::DoNotOptimize(sorted.plan());
    }
    bench.SetComplexityN(bench.range(0));
}

/// The bare copy of the identifiers that a plan names, into one vector. `planApps` is measured by it.
void copyOfPlan(benchmark::State& bench) {
    const VisibilityPlan plan = Sorted(bench.range(0)).plan();
    const auto allowed = plan.allowed().value_or(std::vector<BundleID>());
    for (auto step : bench) {
        std::vector<BundleID> copy = allowed;
        benchmark::DoNotOptimize(copy);
    }
}

BENCHMARK(copyOfPlan)->Arg(40)->Arg(1000);
BENCHMARK(planApps)->Arg(10)->Arg(40)->Arg(200)->Arg(1000)->Arg(10000)->Complexity(benchmark::oN);

/// Each keystroke of a word that is typed letter by letter, among `count` apps.
void searchApps(benchmark::State& bench) {
    std::vector<AppSearch::App> apps;
    for (std::int64_t app = 0; app < bench.range(0); ++app) {
        const std::string number = std::to_string(app * 7919 % 10007);
        apps.push_back({.bundleID = "com.example.vendor" + number, .name = "Größter Menü-Helfer " + number});
    }
    const AppSearch search(std::move(apps));
    constexpr std::string_view typed = "gröhelf1";
    std::size_t length = 0;
    for (auto step : bench) {
        benchmark::DoNotOptimize(search.find(typed.substr(0, length)));
        length = (length + 1) % (typed.size() + 1);
    }
}

BENCHMARK(searchApps)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace velko
