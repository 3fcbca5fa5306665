#include "Scenarios/Acts/Clock.h"

#include <chrono>

#include "Simulator/Time/SimulatedMainThread.h"

namespace velko::script {

namespace {

using std::chrono::floor;
using std::chrono::milliseconds;

constexpr PreciseDate earliest = std::chrono::sys_days(std::chrono::year{1700} / 1 / 1);
constexpr PreciseDate latest = std::chrono::sys_days(std::chrono::year{2200} / 1 / 1);
constexpr MainThread::Uptime longest = std::chrono::days(200 * 365);

}  // namespace

std::expected<void, std::string> clockCanMove(const SimulatedMac& mac, MainThread::Uptime by) {
    const PreciseDate date = mac.mainThread.date() + floor<milliseconds>(by);
    return date >= earliest && date < latest
               ? std::expected<void, std::string>()
               : std::unexpected("The clock of this Mac knows the years 1700 to 2199 only.");
}

std::expected<void, std::string> timeCanPass(const SimulatedMac& mac, MainThread::Uptime duration) {
    return duration > longest || mac.mainThread.now() > longest - duration
               ? std::unexpected("This Mac runs for two hundred years at most.")
               : clockCanMove(mac, duration);
}

}  // namespace velko::script
