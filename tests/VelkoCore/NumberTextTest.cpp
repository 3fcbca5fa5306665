#include <array>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <utility>

#include "VelkoCore/NumberText.h"
#include "tests/TemporaryFolder.h"

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

/// While it lives, the C library writes another character between a number and its decimals. Not every
/// machine can make such a locale.
class OtherPoint final : private NonCopyable {
 public:
    explicit OtherPoint(const std::string& point) {
        const auto source = folder_.path() / "source";
        writeFile(source, "LC_NUMERIC\ndecimal_point \"" + point +
                              "\"\nthousands_sep \"\"\ngrouping -1\nEND LC_NUMERIC\n");
        const std::string command = "localedef -c -f UTF-8 -i " + source.string() + " " +
                                    (folder_.path() / "other").string() + " >/dev/null 2>&1";
        EXPECT_GE(std::system(command.c_str()), 0);
        setenv("LOCPATH", folder_.path().c_str(), 1);
        isSet_ = std::setlocale(LC_NUMERIC, "other") != nullptr;
    }
    ~OtherPoint() {
        std::setlocale(LC_NUMERIC, "C");
        unsetenv("LOCPATH");
    }
    [[nodiscard]] bool isSet() const { return isSet_; }

 private:
    TemporaryFolder folder_;
    bool isSet_ = false;
};

TEST(NumberText, IsTheSameInEveryLocale) {
    for (const auto* point : {"<U002C>", "<U066B>"}) {  // a comma, and a character of two bytes
        const OtherPoint other(point);
        if (!other.isSet()) {
            GTEST_SKIP() << "localedef can't make a locale here";
        }
        EXPECT_EQ(std::strtod("0.5", nullptr), 0) << "the locale counts";
        EXPECT_EQ(fixedText(-12.75, 2), "-12.75");
        EXPECT_EQ(fixedText(9.96, 1), "10.0");
        EXPECT_EQ(fixedText(1234.4, 0), "1234");
        EXPECT_EQ(decimalText(0.1), "0.1");
        EXPECT_EQ(decimalText(1e-7), "0.0000001");
        EXPECT_EQ(decimalText(123456.5), "123456.5");
    }
}

}  // namespace
}  // namespace velko
