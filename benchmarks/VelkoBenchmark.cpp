#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Machine/SimulatedSession.h"
#include "Simulator/Machine/VelkoOnSimulatedMac.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/App/AppController.h"
#include "Velko/App/FaceParts.h"
#include "Velko/App/Log.h"
#include "Velko/Broom/BroomFrame.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Search/SearchController.h"
#include "Velko/View/Tree.h"
#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoCore/Import/Importers.h"
#include "VelkoCore/Layout/LayoutStore.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoCore/Sorting/SortSession.h"

// What Velko costs the machine that it runs on, and how long people wait for it, in the machine's own time.

namespace velko {
namespace {

using namespace std::chrono_literals;

class Folder final : private NonCopyable {
 public:
    Folder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "velko-benchmark-XXXXXX").string();
        path_ = mkdtemp(pattern.data());
    }
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

 private:
    std::filesystem::path path_;
};

/// Velko, not started yet, on a Mac with that many apps of one icon each, sorted evenly into the sections,
/// and with the settings of a fresh installation.
class Installation final {
 public:
    Installation(std::int64_t apps, std::int64_t hung) {
        Layout layout;
        layout.hasCompletedSetup = true;
        for (std::int64_t number = 0; number < apps; ++number) {
            const std::string name = "App" + std::to_string(number);
            const Section section = allSections.at(static_cast<std::size_t>(number) % allSections.size());
            layout.place(name, section);
            inBar += section == Section::bar ? 1 : 0;
            layout.seenApps->insert(name);
            const ProcessID pid = mac.launch({.bundleID = name, .name = name, .icons = {{.title = name}}});
            mac.hang(pid, number < hung);
        }
        const LayoutStore store(folder_.path() / "layout.json", mac.fileCalls());
        if (!store.save(layout)) {
            std::abort();
        }
        velko = std::make_unique<AppController>(velkoOn(mac, log, store, {.version = "1.0"}));
    }

    /// Simulated milliseconds until `isDone`, looked at every millisecond.
    template <class IsDone>
    double millisecondsUntil(IsDone isDone) {
        constexpr double patience = 60'000;
        double waited = 0;
        while (!isDone() && waited < patience) {
            mac.advance(1ms);
            ++waited;
        }
        return waited;
    }

 private:
    Folder folder_;

 public:
    std::size_t inBar = 0;  ///< the apps in that section, beside which the broom stands
    SimulatedMac mac;
    Log log{mac.mainThread, folder_.path() / "Velko.log", mac.fileCalls()};
    std::unique_ptr<AppController> velko;
};

/// An hour in which nothing happens; the counters tell what Velko still does.
void idleHour(benchmark::State& state) {
    Installation installation(state.range(0), 0);
    SimulatedMac& mac = installation.mac;
    installation.velko->start();
    // The system lets a program that nobody looks at nap, which costs less.
    const Subscription awake = state.range(1) == 0 ? Subscription() : mac.activity.begin("benchmark");
    mac.advance(5min);
    const auto before = mac.cost();
    for (auto unused : state) {
        mac.advance(1h);
    }
    const auto after = mac.cost();
    const auto count = [&](const char* name, std::uint64_t SimulatedMac::Cost::* part) {
        state.counters[name] = benchmark::Counter(static_cast<double>(after.*part - before.*part),
                                                  benchmark::Counter::kAvgIterations);
    };
    count("wakeUps", &SimulatedMac::Cost::wakeUps);
    count("bursts", &SimulatedMac::Cost::bursts);
    count("messages", &SimulatedMac::Cost::accessibilityMessages);
    count("engineCalls", &SimulatedMac::Cost::engineCalls);
    count("bytesWritten", &SimulatedMac::Cost::bytesWritten);
}
BENCHMARK(idleHour)
    ->ArgNames({"apps", "awake"})
    ->Args({25, 1})
    ->Args({25, 0})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

/// An hour minute by minute, for the picture that tools/draw_cost.py draws: everything is on, then nothing
/// pops out, then the displays sleep. In the middle of the first two the user clicks the broom.
void chartedHour(benchmark::State& state) {
    constexpr int noPopOuts = 20;
    constexpr int asleep = 40;
    Installation installation(25, 0);
    SimulatedMac& mac = installation.mac;
    installation.velko->start();
    const Subscription awake = mac.activity.begin("benchmark");
    mac.advance(5min);
    for (auto unused : state) {
        for (int minute = 0; minute < 60; ++minute) {
            const auto before = mac.cost();
            if (minute == noPopOuts) {
                installation.velko->preferences().setSwitch(Switch::popOutOnChange, false);
            } else if (minute == asleep) {
                mac.session.sleepDisplays();
            } else if (minute == noPopOuts / 2 || minute == (noPopOuts + asleep) / 2) {
                installation.velko->toggle();
            }
            mac.advance(1min);
            const std::string number = (minute < 10 ? "0" : "") + std::to_string(minute);
            const auto after = mac.cost();
            state.counters["bursts" + number] = static_cast<double>(after.bursts - before.bursts);
            state.counters["messages" + number] =
                static_cast<double>(after.accessibilityMessages - before.accessibilityMessages);
        }
    }
}
BENCHMARK(chartedHour)->Iterations(1)->Unit(benchmark::kMillisecond);

/// From the launch to a bar that shows what it is to show and no more, while some apps hang.
void launchToTidyBar(benchmark::State& state) {
    for (auto unused : state) {
        Installation installation(state.range(0), state.range(1));
        installation.velko->start();
        state.counters["simulatedMs"] =
            installation.millisecondsUntil([&] { return installation.mac.framework.inForce().has_value(); });
        installation.millisecondsUntil([&] { return installation.velko->values().inventoryLoaded; });
        state.counters["messages"] = static_cast<double>(installation.mac.cost().accessibilityMessages);
    }
}
BENCHMARK(launchToTidyBar)
    ->ArgNames({"apps", "hung"})
    ->Args({40, 0})
    ->Args({40, 5})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

/// From a click on the broom to the call of the engine, and on to the icons that it brings back, in the
/// middle of a scan that some apps hold up.
void broomClick(benchmark::State& state) {
    for (auto unused : state) {
        Installation installation(state.range(0), state.range(1));
        SimulatedMac& mac = installation.mac;
        installation.velko->start();
        mac.advance(5min);
        const auto calls = mac.cost().engineCalls;
        const auto icons = mac.visibleIcons().size();
        installation.velko->requestScan(ScanDepth::full);
        mac.advance(10ms);
        const auto clickedAt = mac.mainThread.now();
        installation.velko->toggle();
        installation.millisecondsUntil([&] { return mac.cost().engineCalls > calls; });
        const auto since = [&] { return 1000 * secondsOf(mac.mainThread.now() - clickedAt); };
        state.counters["engineCalledMs"] = since();
        installation.millisecondsUntil([&] { return mac.visibleIcons().size() > icons; });
        state.counters["iconsShownMs"] = since();
    }
}
BENCHMARK(broomClick)
    ->ArgNames({"apps", "hung"})
    ->Args({40, 5})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

/// The work between a click on the broom and the call of the engine. It should take at most 0.4 ms.
void clickToEngine(benchmark::State& state) {
    Installation installation(state.range(0), 0);
    SimulatedMac& mac = installation.mac;
    installation.velko->start();
    mac.advance(5min);
    for (auto unused : state) {
        const auto calls = mac.cost().engineCalls;
        installation.velko->toggle();
        if (mac.cost().engineCalls == calls) {
            state.SkipWithError("the engine was not called at once");
            return;
        }
        state.PauseTiming();
        mac.advance(1s);
        state.ResumeTiming();
    }
}
BENCHMARK(clickToEngine)->ArgName("apps")->Arg(100)->Unit(benchmark::kMicrosecond);

/// Answers what a face asks; nothing of that is measured.
class NoHost final : public FaceHost {
 public:
    void onClick() override {}
    void onNote() override {}
    void onSettings() override {}
    void onSettingsOf(const BundleID& /*bundleID*/) override {}
    void onSearch(const std::string& /*typed*/) override {}
    void onResort() override {}
    void onPermission() override {}
    void onMoveToApplications() override {}
    void onVisibilityChange() override {}
    [[nodiscard]] SortSession makeSession() override {
        return SortSession(
            {.apps = {}, .lastClicked = {}, .current = {}, .importSource = {}, .now = {}, .calendar = {}});
    }
    [[nodiscard]] std::optional<ImportedLayout> imported() const override { return std::nullopt; }
};

/// A keystroke in the search, from the field to the rows that show.
void searchKeystroke(benchmark::State& state) {
    Installation installation(state.range(0), 0);
    SimulatedMac& mac = installation.mac;
    installation.velko->start();
    mac.advance(1min);
    NoHost host;
    const FaceParts parts{.controller = *installation.velko,
                          .platform = mac.platform(),
                          .ports = mac.appPorts(),
                          .log = installation.log,
                          .host = host};
    BroomFrame broom(parts);
    broom.refresh();
    SearchController search(parts, broom);
    search.show({});
    SimulatedSurface& panel = mac.surfaces.surface(Surfaces::Kind::search);
    const auto before = mac.cost().accessibilityMessages;
    const std::string typed = "app1";
    std::size_t length = 0;
    for (auto unused : state) {
        benchmark::DoNotOptimize(panel.perform("field", typed.substr(0, length)));
        length = (length + 1) % (typed.size() + 1);
    }
    state.counters["messages"] = static_cast<double>(mac.cost().accessibilityMessages - before);
    state.counters["rows"] =
        static_cast<double>(view::childrenOf(*view::find(*panel.content(), "list")).size());
    mac.surfaces.forget();
}
BENCHMARK(searchKeystroke)->ArgName("apps")->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace velko
