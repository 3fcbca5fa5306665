#include <chrono>

#include "Scenarios/Acts/Acts.h"
#include "Simulator/Machine/SimulatedSession.h"
#include "Simulator/Time/SimulatedMainThread.h"

namespace velko::script {

namespace {

using scenarios::World;

using std::chrono::floor;
using std::chrono::milliseconds;

constexpr PreciseDate earliest = std::chrono::sys_days(std::chrono::year{1700} / 1 / 1);
constexpr PreciseDate latest = std::chrono::sys_days(std::chrono::year{2200} / 1 / 1);
constexpr MainThread::Uptime longest = std::chrono::days(200 * 365);

Done setClock(World& world, std::chrono::milliseconds change) {
    const Done done = clockCanMove(world.mac(), change);
    if (done) {
        auto& clock = world.mac().mainThread;
        clock.setDate(clock.date() + change);
    }
    return done;
}

Done wait(const Step& step, World& world) {
    const Done done = timeCanPass(world.mac(), durationOf(step));
    if (done) {
        world.passTime(durationOf(step));
    }
    return done;
}

Done sleep(const Step& step, World& world) {
    const Done done = clockCanMove(world.mac(), durationOf(step));
    if (done) {
        world.mac().session.sleepAndWake(durationOf(step));
    }
    return done;
}

constexpr auto timeVerbs = std::to_array<MacAct>({
    {Verb::say, does<[](const Step&, World&) {}>},
    {Verb::wait, wait},
    {Verb::sleep, sleep},
    {Verb::clockForward,
     [](const Step& step, World& world) -> Done { return setClock(world, durationOf(step)); }},
    {Verb::clockBack,
     [](const Step& step, World& world) -> Done { return setClock(world, -durationOf(step)); }},
    {Verb::zone, does<[](const Step& step, World& world) { world.mac().zone.set(step.word); }>},
});

}  // namespace

Done clockCanMove(const SimulatedMac& mac, MainThread::Uptime by) {
    const PreciseDate date = mac.mainThread.date() + floor<milliseconds>(by);
    return date >= earliest && date < latest
               ? Done()
               : std::unexpected("The clock of this Mac knows the years 1700 to 2199 only.");
}

Done timeCanPass(const SimulatedMac& mac, MainThread::Uptime duration) {
    return duration > longest || mac.mainThread.now() > longest - duration
               ? std::unexpected("This Mac runs for two hundred years at most.")
               : clockCanMove(mac, duration);
}

std::span<const MacAct> timeActs() {
    return timeVerbs;
}

}  // namespace velko::script
