#include <array>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <utility>

#include "VelkoCore/NumberText.h"

namespace velko {
namespace {

TEST(NumberText, IsTheShortestThatReadsBack) {
    const std::array<std::pair<double, const char*>, 12> cases{{{0, "0"},
                                                                {-0.0, "-0"},
                                                                {1, "1"},
                                                                {0.1, "0.1"},
                                                                {0.25, "0.25"},
                                                                {-12.5, "-12.5"},
                                                                {100.001, "100.001"},
                                                                {1.0 / 3, "0.3333333333333333"},
                                                                {0.1 + 0.2, "0.30000000000000004"},
                                                                {1e-7, "0.0000001"},
                                                                {9007199254740993.0, "9007199254740992"},
                                                                {1e22, "10000000000000000000000"}}};
    for (const auto& [number, text] : cases) {
        EXPECT_EQ(decimalText(number), text);
    }
    EXPECT_EQ(decimalText(std::numeric_limits<double>::max()).size(), 309U);
    EXPECT_EQ(decimalText(std::numeric_limits<double>::denorm_min()).size(), 326U);
    EXPECT_EQ(decimalText(std::numeric_limits<double>::infinity()), "inf");
    std::mt19937_64 dice(1);
    for (int round = 0; round < 2000; ++round) {
        const double number = std::ldexp(static_cast<double>(dice()), static_cast<int>(dice() % 200) - 150);
        EXPECT_EQ(std::strtod(decimalText(number).c_str(), nullptr), number);
    }
}

TEST(NumberText, RoundsAndTruncates) {
    EXPECT_EQ(fixedText(0.25, 1), "0.2");
    EXPECT_EQ(fixedText(9.96, 1), "10.0");
    EXPECT_EQ(fixedText(-1.5, 0), "-2");
    EXPECT_EQ(wholeText(-3.9), "-3");
    EXPECT_EQ(wholeText(-0.5), "0");
}

}  // namespace
}  // namespace velko
