#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "VelkoCore/Search/NameOrder.h"

namespace velko {
namespace {

TEST(NameOrder, SortsAsAPersonExpects) {
    const std::vector<std::string> sorted{"1Password", "7zip",   "10 Tabs", "app",   "App 2",
                                          "app 02x",   "app 10", "apple",   "Émile", "emily",
                                          "Übersicht", "Umbra",  "zebra",   "日本語"};
    std::vector<std::string> names = sorted;
    const auto seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int turn = 0; turn < 20; ++turn) {
        std::ranges::shuffle(names, random);
        std::ranges::sort(
            names, [](const auto& left, const auto& right) { return NameOrder(left) < NameOrder(right); });
        ASSERT_EQ(names, sorted);
    }
    EXPECT_EQ(NameOrder("a"), NameOrder("a"));
    EXPECT_NE(NameOrder("a"), NameOrder("A"));
    EXPECT_LT(NameOrder("x 99999999999999999999"), NameOrder("x 100000000000000000000"));
    EXPECT_TRUE(NameOrder("Über-Sicht").contains(FoldedText::of("rsi")));
    EXPECT_FALSE(NameOrder("Übersicht").contains(FoldedText::of("us")));
}

}  // namespace
}  // namespace velko
