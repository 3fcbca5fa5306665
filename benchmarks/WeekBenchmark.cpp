#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <unistd.h>
#include <vector>

#ifdef __GLIBC__
#include <malloc.h>
#endif

#include "Playground/Terminal/Folders.h"
#include "Scenarios/Acts/Acts.h"
#include "Scenarios/Language/Script.h"
#include "Scenarios/World.h"

// Long stretches of a Mac that never sleeps, with forty apps. Besides the time it takes, each tells what it
// does to the process's memory: its resident pages after the second day, and by how much they grew by the
// end, in percent.

namespace velko::playground {
namespace {

/// How much of this process is in memory, in bytes; 0 when the system does not say.
double residentBytes() {
    std::ifstream pages("/proc/self/statm");
    double size = 0;
    double resident = 0;
    pages >> size >> resident;
    return resident * static_cast<double>(::sysconf(_SC_PAGESIZE));
}

/// What the C library has given away and not got back, in bytes; 0 where it does not say.
double bytesInUse() {
#ifdef __GLIBC__
    const auto memory = ::mallinfo2();
    return static_cast<double>(memory.uordblks + memory.hblkhd);
#else
    return 0;
#endif
}

std::string apps() {
    std::string text = "launch neighbours\nlaunch Linear\n";
    for (int number = 1; number <= 9; ++number) {
        text += "launch com.example.app" + std::to_string(number) + "\n";
    }
    return text;
}

std::string start() {
    std::string text = "velko start\nwait 5 s\nfinish setup\n";
    for (const char* app : {"Dropbox", "Docker", "Spotify", "Discord", "Teams", "GitHub", "OneDrive"}) {
        text += "place " + std::string(app) + " tucked\n";
    }
    for (int number = 1; number <= 9; ++number) {
        text += "place com.example.app" + std::to_string(number) + " tucked\n";
    }
    return text;
}

/// An hour in which the user clicks, icons change, an app comes and goes, and an activity runs.
std::string busyHour(int hour) {
    return "icon title Spotify \"Song " + std::to_string(hour) +
           "\"\nwait 10 min\n"
           "click broom\nwait 2 s\nclick icon Slack\nwait 5 s\nclick outside\nwait 10 min\n"
           "quit Zoom\nwait 1 min\nlaunch Zoom\nactivity start\nwait 1 min\nactivity end\nwait 30 min\n"
           "open Dropbox\nwait 2 s\nmenu close\nwait 7 min\n";
}

std::string busyDay() {
    std::string text;
    for (int hour = 0; hour < 24; ++hour) {
        text += busyHour(hour);
    }
    return text;
}

/// Performs the steps without the rules of scenarios, which cost more than what is measured here.
bool isPerformed(const std::vector<script::Line>& lines, scenarios::World& world) {
    return std::ranges::all_of(lines, [&](const script::Line& line) {
        const bool isDone = script::perform(line.step, world).has_value();
        world.mac().advance({});
        return isDone;
    });
}

/// What Velko adds to the memory of a simulated Mac, and what its largest surfaces add while they are open:
/// the settings' list of apps, and the search. In KB of resident pages, and of memory in use where the C
/// library tells.
void surfaces(benchmark::State& state) {
    struct Memory {
        double resident = residentBytes();
        double used = bytesInUse();
    };
    const auto folder = ScratchFolder::create();
    const auto without = script::read(apps());
    const auto with = script::read(start() + "wait 1 min\n");
    const auto opening = script::read(
        "set key search control+option+m\nvelko reopen\nwait 1 s\npress keys control+option+m\n"
        "expect open settings\nexpect open search\n");
    const auto closing = script::read("press keys control+option+m\nclose settings\nwait 1 s\n");
    if (!folder || !without || !with || !opening || !closing) {
        state.SkipWithError("a folder or a step is missing");
        return;
    }
    for ([[maybe_unused]] auto run : state) {
        scenarios::World world(folder->path());
        bool isFine = isPerformed(*without, world);
        const Memory mac;
        isFine = isFine && isPerformed(*with, world);
        const Memory atRest;
        isFine = isFine && isPerformed(*opening, world);
        const Memory open;
        isFine = isFine && isPerformed(*closing, world);
        const Memory closed;
        const auto count = [&](const std::string& name, const Memory& now) {
            state.counters[name + "_resident_KB"] = (now.resident - mac.resident) / 1e3;
            state.counters[name + "_used_KB"] = (now.used - mac.used) / 1e3;
        };
        count("rest", atRest);
        count("open", open);
        count("closed", closed);
        if (!isFine) {
            state.SkipWithError("a step failed");
            return;
        }
    }
}
BENCHMARK(surfaces)->Iterations(1)->Unit(benchmark::kMillisecond);

/// Plays `first`, and then a day as often as asked.
void playDays(benchmark::State& state, const std::string& first, const std::string& day, int days) {
    const auto folder = ScratchFolder::create();
    if (!folder) {
        state.SkipWithError("no temporary folder");
        return;
    }
    const auto opening = script::read(first);
    const auto routine = script::read(day);
    for ([[maybe_unused]] auto run : state) {
        scenarios::World world(folder->path());
        bool isFine = opening && routine && isPerformed(*opening, world);
        double before = 0;
        for (int number = 1; number <= days && isFine; ++number) {
            isFine = isPerformed(*routine, world);
            before = number == 2 ? residentBytes() : before;
        }
        const double after = residentBytes();
        state.counters["resident_MB"] = before / 1e6;
        state.counters["growth_percent"] = (after / before - 1) * 100;
        if (!isFine) {
            state.SkipWithError("a step failed");
            return;
        }
    }
}

/// It should take at most 4 seconds.
void weekWithEverythingOn(benchmark::State& state) {
    playDays(state, apps() + start(), busyDay(), 7);
}
BENCHMARK(weekWithEverythingOn)->Iterations(1)->Unit(benchmark::kSecond);

/// It should take at most 40 seconds.
void yearWithoutPopOuts(benchmark::State& state) {
    playDays(state, apps() + start() + "set pop-out off\n", "click broom\nwait 1 day\n", 365);
}
BENCHMARK(yearWithoutPopOuts)->Iterations(1)->Unit(benchmark::kSecond);

}  // namespace
}  // namespace velko::playground
