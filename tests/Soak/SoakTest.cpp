#include <gtest/gtest.h>

#include "tests/Soak/Kills.h"
#include "tests/Soak/Shrink.h"
#include "tests/Soak/Walk.h"

namespace velko::soak {
namespace {

constexpr std::chrono::minutes length(VELKO_SOAK_MINUTES);

class Soak : public testing::TestWithParam<std::uint64_t> {};

TEST_P(Soak, HoldsWhateverHappens) {
    const Outcome outcome = walk(GetParam(), length);
    EXPECT_GT(outcome.steps.size(), 50U);
    EXPECT_FALSE(outcome.breach) << report(GetParam(), outcome);
}

INSTANTIATE_TEST_SUITE_P(Seed, Soak, testing::Range<std::uint64_t>(1, 11));

TEST(Kills, LeaveTheIconsShownAndTheLayoutWhole) {
    for (std::uint64_t seed = 1; seed <= 50; ++seed) {
        EXPECT_EQ(breachAfterKill(seed), std::nullopt) << "seed " << seed;
    }
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        EXPECT_EQ(breachAfterRealKill(seed), std::nullopt) << "seed " << seed;
    }
}

// A system item that changes is not Velko's fault, but it breaks a rule whatever Velko does.
TEST(Shrink, LeavesNothingButWhatBreaksTheRule) {
    Steps steps = walk(2, std::chrono::minutes(5)).steps;
    const Steps fault = {{.verb = script::Verb::iconTitle, .app = "com.apple.MenuBarAgent", .text = "8"}};
    steps.insert(steps.end() - 10, fault.front());
    const Outcome failure = replay(steps);
    EXPECT_EQ(failure.rule(), "the system's items always show");
    EXPECT_EQ(shrink(failure).steps, fault);
}

TEST(Walk, IsTheSameAgainForTheSameSeed) {
    const Outcome outcome = walk(1, std::chrono::minutes(5));
    EXPECT_EQ(walk(1, std::chrono::minutes(5)).steps, outcome.steps);
    EXPECT_EQ(replay(outcome.steps).steps, outcome.steps);
}

}  // namespace
}  // namespace velko::soak
