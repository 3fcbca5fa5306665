#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "VelkoEngine/Text/Text.h"

namespace velko {
namespace {

TEST(Utf8, KeepsWhatIsWellFormedAndReplacesEachOtherByte) {
    const std::string mark = "\uFFFD";
    const std::vector<std::pair<std::string, std::string>> rows = {
        {std::string("a\0b", 3), std::string("a\0b", 3)},
        {"Café \u0800 \uFFFF 🧹 \U0010FFFF", "Café \u0800 \uFFFF 🧹 \U0010FFFF"},
        {"a\x80z", "a" + mark + "z"},
        {"\xC3", mark},                                   // cut short
        {"\xF0\x9F\xA7z", mark + mark + mark + "z"},      // cut short, then a letter
        {"\xC0\xAF", mark + mark},                        // a slash in two bytes
        {"\xE0\x80\xAF", mark + mark + mark},             // and in three
        {"\xED\xA0\x80", mark + mark + mark},             // half of a surrogate pair
        {"\xF4\x90\x80\x80", mark + mark + mark + mark},  // beyond the last code point
    };
    for (const auto& [text, repaired] : rows) {
        EXPECT_EQ(repairedUtf8(text), repaired) << text;
    }
}

TEST(Utf8, IsolatesNamesThatAreWrittenFromRightToLeft) {
    for (const std::string name : {"Café", "Ֆիլմ", "日本語", "", "🧹"}) {
        EXPECT_EQ(isolated(name), name);
    }
    for (const std::string name : {"מזג אוויר", "Mail بريد", "\uFB2A", "\uFE8D", "\U0001E900"}) {
        EXPECT_EQ(isolated(name), "\u2068" + name + "\u2069");
    }
}

}  // namespace
}  // namespace velko
