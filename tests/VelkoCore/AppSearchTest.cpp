#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "VelkoCore/Search/AppSearch.h"

namespace velko {
namespace {

TEST(AppSearch, MatchesNamesByWordStartsInitialsAndLettersInOrder) {
    using enum NameMatch;
    using Row = std::tuple<const char*, const char*, std::optional<NameMatch>>;
    const std::vector<Row> rows{
        {"", "Google Drive", wordStarts},
        {" - ", "Google Drive", wordStarts},
        {"GOO", "Google Drive", wordStarts},
        {"dri", "Google Drive", wordStarts},
        {"goo dri", "Google Drive", wordStarts},
        {"googledri", "Google Drive", wordStarts},
        {"dri goo", "Google Drive", std::nullopt},
        {"goo goo", "Google Drive", std::nullopt},
        {"gd", "Google Drive", initials},
        {"g d", "Google Drive", wordStarts},
        {"gle", "Google Drive", subsequence},
        {"gldv", "Google Drive", subsequence},
        {"gdx", "Google Drive", std::nullopt},
        {"od", "OneDrive", initials},
        {"p", "1Password", wordStarts},
        {"stat", "iStat Menus", wordStarts},
        {"ex", "PDFExpert", wordStarts},
        {"df", "PDFExpert", subsequence},
        {"7", "Bartab 7", wordStarts},
        {"24h", "Clock24h", wordStarts},
        // Without case and accents, whichever way an accent is written.
        {"uber", "Über", wordStarts},
        {"ÜBER", "uber", wordStarts},
        {"cafe", "Cafe\u0301", wordStarts},
        {"café", "CAFÉ", wordStarts},
        {"strasse", "Straße", wordStarts},
        {"aera", "Æra", wordStarts},
        {"lodz", "Łódź", wordStarts},
        {"istanbul", "İSTANBUL", wordStarts},
        {"viet", "Việt", wordStarts},
        {"Ёлка", "елка", wordStarts},
        {"йод", "ИОД", wordStarts},
        {"λόγος", "ΛΟΓΟΣ", wordStarts},
        {"ｖｅｌ", "Velko", wordStarts},
        {"音乐", "网易云音乐", subsequence},
        {"b", "a\xFF\x62", wordStarts},
        {"b", "a\xC0\x62", wordStarts},
        {"b", "a…b", wordStarts},
        {"a", "", std::nullopt},
    };
    for (const auto& [typed, name, expected] : rows) {
        EXPECT_EQ(AppSearch::match(typed, name), expected) << '"' << typed << "\" in " << name;
    }
}

TEST(AppSearch, OrdersByMatchThenByLastClickThenByName) {
    const auto at = [](int day) { return Date(std::chrono::days(20'000 + day)); };
    const AppSearch search({{.bundleID = "a", .name = "Big Adder"},
                            {.bundleID = "b", .name = "Adium", .lastClicked = at(1)},
                            {.bundleID = "c", .name = "Adobe", .lastClicked = at(2)},
                            {.bundleID = "d", .name = "Alpha Dog", .lastClicked = at(9)},
                            {.bundleID = "e", .name = "Sand", .lastClicked = at(9)},
                            {.bundleID = "f", .name = "Zebra", .lastClicked = at(9)},
                            {.bundleID = "g", .name = "ädäm"}});
    const auto found = [&](const char* typed) {
        std::string order;
        for (const auto& app : search.find(typed)) {
            order += app.bundleID;
        }
        return order;
    };
    EXPECT_EQ(found("ad"), "cbgade");
    EXPECT_EQ(found(""), "defcbga");
    EXPECT_EQ(found("xyz"), "");
}

}  // namespace
}  // namespace velko
