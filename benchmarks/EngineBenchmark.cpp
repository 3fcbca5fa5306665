#include <benchmark/benchmark.h>
#include <chrono>
#include <string>

#include "Simulator/Machine/SimulatedMac.h"
#include "VelkoEngine/Hiding/MenuBarEngine.h"
#include "VelkoEngine/MenuBar/Inventory.h"
#include "VelkoEngine/Ports/Platform.h"

namespace velko {
namespace {

/// The last step of every reveal event and every scan, when nothing has changed.
void applyUnchangedPlan(benchmark::State& state) {
    SimulatedMac mac;
    AssessmentEngine engine(mac.platform());
    std::vector<BundleID> allowed(static_cast<std::size_t>(state.range(0)));
    for (std::size_t number = 0; number < allowed.size(); ++number) {
        allowed[number] = "com.example.menubar.app" + std::to_string(number);
    }
    const auto plan = VisibilityPlan::allow(allowed);
    engine.apply(plan, false, [](const auto&) {});
    mac.advance(std::chrono::seconds(1));
    for (auto unused : state) {
        engine.apply(plan, false, [](const auto& result) { benchmark::DoNotOptimize(result); });
    }
}
BENCHMARK(applyUnchangedPlan)->Arg(10)->Arg(40);

/// A full scan of that many apps with one icon each; the simulated apps' own time does not count.
void scanInventory(benchmark::State& state) {
    SimulatedMac mac;
    for (int number = 0; number < state.range(0); ++number) {
        const std::string name = "App" + std::to_string(number);
        mac.launch({.bundleID = "com.example." + name, .name = name, .icons = {{.title = name}}});
    }
    mac.advance(std::chrono::seconds(1));
    const auto before = mac.cost().accessibilityMessages;
    for (auto unused : state) {
        std::size_t count = 0;
        const auto task =
            Inventory::items(mac.platform(), {}, [&](const auto& found) { count = found.items.size(); });
        mac.advance(std::chrono::seconds(1));
        benchmark::DoNotOptimize(count);
    }
    state.counters["messages"] = benchmark::Counter(
        static_cast<double>(mac.cost().accessibilityMessages - before), benchmark::Counter::kAvgIterations);
}
BENCHMARK(scanInventory)->Arg(40)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace velko
