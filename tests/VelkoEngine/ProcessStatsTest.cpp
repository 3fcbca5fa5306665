#include <chrono>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <optional>

#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Machine/SimulatedMac.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Processes.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

/// A kernel that gives any figures.
class StrangeProcesses final : public Processes {
 public:
    [[nodiscard]] ProcessID ownPID() const override { return 1; }
    [[nodiscard]] std::optional<std::vector<ProcessID>> list() const override { return std::nullopt; }
    [[nodiscard]] std::optional<std::string> name(ProcessID /*pid*/) const override { return std::nullopt; }
    [[nodiscard]] std::optional<ResourceUsage> resourceUsage(ProcessID /*pid*/) const override {
        return usage;
    }
    [[nodiscard]] TimeBase timeBase() const override { return base; }
    [[nodiscard]] NullSignal nullSignal(ProcessID /*pid*/) const override { return NullSignal::delivered; }

    ResourceUsage usage;
    TimeBase base;
};

TEST(ProcessStats, ConvertTheKernelsTimeWithoutOverflow) {
    constexpr auto most = std::numeric_limits<std::uint64_t>::max();
    constexpr auto most32 = std::numeric_limits<std::uint32_t>::max();
    const struct {
        std::uint64_t user;
        std::uint64_t system;
        TimeBase base;
        std::optional<std::uint64_t> nanoseconds;
    } cases[] = {
        {3, 21, {125, 3}, 1000},
        {1, 1, {125, 3}, 83},  // 83.3: whole nanoseconds, rounded down once
        {1'000'000'000'000'000'000, 0, {10, 3}, 3'333'333'333'333'333'333},  // its product needs 64 bits
        {most, 0, {3, 125}, 442'721'857'769'029'238},                        // its product needs 66
        {most, 0, {most32, most32}, most},
        {most - 1, 1, {1, 1}, most},
        {most, 1, {1, 1}, std::nullopt},
        {most, 0, {most32, most32 - 1}, std::nullopt},
        {7, 0, {125, 0}, std::nullopt},
        {7, 0, {0, 1}, 0},
    };
    SimulatedMac mac;
    StrangeProcesses strange;
    const Platform real = mac.platform();
    const Platform platform{real.mainThread, real.accessibility,    real.workspace,
                            real.displays,   real.pointer,          strange,
                            real.windows,    real.privateFramework, real.activity};
    for (const auto& [user, system, base, nanoseconds] : cases) {
        strange.usage = {.userTime = user, .systemTime = system};
        strange.base = base;
        const auto sample = ProcessStats::sample(platform, 1);
        ASSERT_EQ(sample.has_value(), nanoseconds.has_value()) << user << " " << base.numerator;
        EXPECT_EQ(sample.value_or(ProcessSample{}).cpuNanoseconds, nanoseconds.value_or(0));
    }
}

TEST(ProcessStats, FollowAProcessOfTheUsersUntilItDies) {
    SimulatedMac mac;
    const auto sample = [&](ProcessID pid) { return ProcessStats::sample(mac.platform(), pid); };
    const ProcessID pid = mac.launch({.bundleID = "a", .name = "A"});
    mac.processes.setMemory(pid, 812'000'000);
    mac.processes.work(pid, 0.25);
    mac.advance(8s);
    EXPECT_EQ(sample(pid), (ProcessSample{.cpuNanoseconds = 2'000'000'000, .memoryBytes = 812'000'000}));
    mac.crash(pid);
    EXPECT_EQ(sample(pid), std::nullopt);
    EXPECT_EQ(sample(mac.launch({.name = "Somebody else's", .isForeign = true})), std::nullopt);
}

}  // namespace
}  // namespace velko
