#include "tests/Soak/Kills.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <filesystem>
#include <random>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "Scenarios/Acts/Acts.h"
#include "Scenarios/World.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "Simulator/MenuBar/SimulatedMenuBar.h"
#include "Velko/App/AppController.h"
#include "VelkoCore/Layout/LayoutStore.h"
#include "tests/Soak/Chance.h"
#include "tests/TemporaryFolder.h"

namespace velko::soak {

namespace {

using scenarios::World;

/// What is wrong with the file, which Velko has just left behind.
std::optional<std::string> breachOfFile(const World& world) {
    const LayoutStore store(world.layoutFile());
    const auto layout = store.load();
    if (!layout) {
        return "the layout is not whole: " + layout.error().description;
    }
    const auto history = store.history().list();
    if (!history) {
        return "the history cannot be listed: " + history.error().description;
    }
    const auto broken = std::ranges::find_if(*history, [](const auto& each) { return !each.layout; });
    return broken == history->end() ? std::nullopt
                                    : std::optional("not whole: " + broken->layout.error().description);
}

std::optional<std::string> breachOfBar(World& world) {
    if (world.mac().framework.activeAssertions() > 0) {
        return "an assertion has outlived Velko";
    }
    const auto& slots = world.mac().menuBar().slots();
    const auto hidden =
        std::ranges::find_if(slots, [](const SimulatedMenuBar::Slot& slot) { return !slot.isVisible; });
    return hidden == slots.end() ? std::nullopt : std::optional(hidden->appName + " does not show");
}

/// Starts Velko on what is left.
std::optional<std::string> breachOfRestart(World& world) {
    world.startVelko();
    world.mac().advance(std::chrono::seconds(10));
    if (world.velko()->values().health().kind == Health::Kind::layoutUnreadable) {
        return "Velko cannot read its layout";
    }
    world.quitVelko();
    world.mac().advance(std::chrono::seconds(1));
    const auto left = breachOfFile(world);
    return left ? left : breachOfBar(world);
}

/// Lets things happen. Only the user never spoils the layout: whatever is wrong with it is Velko's work.
void live(World& world, Chance& chance, std::size_t steps) {
    for (std::size_t step = 0; step < steps; ++step) {
        if (const script::Step next = chance.next(world); next.verb != script::Verb::fileSpoil) {
            static_cast<void>(script::perform(next, world));  // not every step is possible
        }
    }
}

}  // namespace

std::optional<std::string> breachAfterKill(std::uint64_t seed) {
    TemporaryFolder folder;
    World world(folder.path());
    Chance chance(seed);
    for (const script::Step& step : chance.beginning()) {
        static_cast<void>(script::perform(step, world));
    }
    std::mt19937_64 random(seed);
    live(world, chance, random() % 60);
    world.savingFails = false;

    // Every other time it dies within a save: from some call on, nothing reaches the disk.
    const bool isAnyFile = std::filesystem::exists(world.layoutFile());
    if (random() % 2 == 0) {
        world.callsUntilDeath = random() % 12;
        live(world, chance, random() % 20);
    }
    world.mac().advance(std::chrono::microseconds(random() % 2'000'000));
    world.crashVelko();
    world.callsUntilDeath.reset();
    if (const auto breach = breachOfFile(world)) {
        return breach;
    }
    if (isAnyFile && !std::filesystem::exists(world.layoutFile())) {
        return "the layout's file is gone";
    }
    for (const auto& wait : {std::chrono::seconds(0), std::chrono::seconds(30)}) {
        world.mac().advance(wait);
        if (const auto breach = breachOfBar(world)) {
            return breach;
        }
    }
    return breachOfRestart(world);
}

std::optional<std::string> breachAfterRealKill(std::uint64_t seed) {
    TemporaryFolder folder;
    std::mt19937_64 random(seed);
    const pid_t child = fork();
    if (child == 0) {
        World world(folder.path());
        Chance chance(seed);
        for (const script::Step& step : chance.beginning()) {
            static_cast<void>(script::perform(step, world));
        }
        for (;;) {
            live(world, chance, 100);
        }
    }
    if (child < 0) {
        return "no process can be started";
    }
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 50'000));
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    World world(folder.path());
    if (const auto breach = breachOfFile(world)) {
        return breach;
    }
    return breachOfRestart(world);
}

}  // namespace velko::soak
