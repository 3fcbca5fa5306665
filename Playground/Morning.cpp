#include "Playground/Morning.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <iostream>
#include <optional>
#include <string>
#include <system_error>

#include "Playground/Neighbourhood.h"
#include "Playground/Options.h"
#include "Playground/Stage.h"
#include "VelkoCore/LayoutStore.h"

namespace velko::playground {

namespace {

using namespace std::chrono_literals;

/// Names the layout file and, on a first run, writes it.
bool prepareLayout(const std::filesystem::path& layoutFile, bool mayCreate) {
    std::error_code error;
    const bool exists = std::filesystem::exists(layoutFile, error);
    if (!exists && !mayCreate) {
        std::cerr << "There is no file " << layoutFile.string() << ".\n";
        return false;
    }
    if (!exists) {
        if (const auto saved = LayoutStore(layoutFile).save(firstLayout()); !saved) {
            std::cerr << "The layout could not be written: " << saved.error().description << '\n';
            return false;
        }
    }
    std::cout << "Layout: " << layoutFile.string()
              << (exists ? "\n" : " (just made; edit it and run again)\n");
    return true;
}

/// How long the bar took to change after `act`: the system's part included.
template <class Act>
std::chrono::milliseconds timeToChange(SimulatedMac& mac, Act act) {
    const auto start = mac.mainThread.now();
    std::optional<MainThread::Uptime> changed;
    mac.onMenuBarChange = [&] { changed = changed.value_or(mac.mainThread.now()); };
    act();
    mac.advance(2s);
    mac.onMenuBarChange = nullptr;
    return std::chrono::duration_cast<std::chrono::milliseconds>(changed.value_or(start) - start);
}

void explainProblem(const AppController& velko) {
    const Health health = velko.values().health();
    if (health.kind == Health::Kind::layoutUnreadable) {
        std::cout << "\nVelko can't read this layout, so it hides nothing and leaves the file as it is:\n    "
                  << health.message << '\n';
    }
}

}  // namespace

int playMorning(const std::filesystem::path& layoutFile, bool mayCreate) {
    if (!prepareLayout(layoutFile, mayCreate)) {
        return 1;
    }
    std::error_code error;
    std::filesystem::create_directories(keptFolder(), error);  // without it, the log stays in memory
    Stage stage(layoutFile, keptFolder() / "Velko.log");
    SimulatedMac& mac = stage.mac();
    for (const Neighbour& neighbour : neighbours()) {
        mac.launch(appOf(neighbour));
    }
    stage.show("Eight o'clock: the menu bar before Velko");

    const auto tidied = timeToChange(mac, [&] { stage.velko().start(); });
    stage.show("Velko is launched and tidies");
    explainProblem(stage.velko());

    const auto revealed = timeToChange(mac, [&] { stage.velko().toggle(); });
    stage.show("A click on the broom");

    mac.advance(std::chrono::seconds(
        std::max<std::int64_t>(stage.velko().values().layout.reveal.autoTuckSeconds, 1)));
    stage.show("A few seconds later");

    mac.advance(40min);
    mac.launch(appOf(latecomer()));
    mac.advance(100ms);
    stage.show(std::string(latecomer().name) + " is launched");
    mac.advance(20s);
    stage.show("Twenty seconds later");

    stage.showSummary();
    std::cout << "Tidy " << tidied.count() << " ms after launch, tucked icons out " << revealed.count()
              << " ms after the click (simulated time)\n";
    stage.velko().quit();
    mac.advance(1s);
    stage.show("Velko quits");
    return 0;
}

}  // namespace velko::playground
