#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "VelkoCore/Files/Json.h"

namespace velko {
namespace {

std::string repeated(std::string_view text, std::size_t times) {
    std::string result;
    for (std::size_t time = 0; time < times; ++time) {
        result += text;
    }
    return result;
}

TEST(Json, TellsTheKindsOfNumbersApart) {
    const auto json = Json::parse("[0, -1, 18446744073709551615, 6.0, 18446744073709551616, true, null]");
    const Json::Array expected{
        {std::uint64_t{0}}, {std::int64_t{-1}}, {UINT64_MAX}, {6.0}, {18446744073709551616.0}, {true},
        {nullptr}};
    ASSERT_TRUE(json);
    EXPECT_EQ(json->value, Json::Value{expected});
}

TEST(Json, SaysWhereATextIsNotJson) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"{} {}", "not valid JSON at line 1, column 4"},
        {"{\n  \"a\": 1,\n  b\n}", "not valid JSON at line 3, column 3"},
        {"[1,]", "not valid JSON at line 1, column 4"},
        {"{\"a\": NaN}", "not valid JSON at line 1, column 7"},
        {"[1e400]", "not valid JSON at line 1, column 6"},
        {"[\"\xFF\"]", "not valid JSON at line 1, column 3"},
        {repeated("[", 65) + repeated("]", 65), "nested more than 64 levels deep"},
        {std::string((16U << 20U) + 1, ' '), "longer than 16 MiB"},
        {repeated("[{\"a\":", 100'000), "nested more than 64 levels deep"},
        {"[" + repeated("0,", 1'000'000) + "0]", "more than 1000000 values"},
    };
    for (const auto& [text, error] : cases) {
        const auto json = Json::parse(text);
        ASSERT_FALSE(json) << text.substr(0, 40);
        EXPECT_EQ(json.error().description, error) << text.substr(0, 40);
    }
    EXPECT_TRUE(Json::parse(repeated("[", 64) + repeated("]", 64)));
}

TEST(Json, LetsTheLastOfEqualKeysHold) {
    EXPECT_EQ(Json::parse(R"({"a": [1, 2], "b": 0, "a": "x"})"), Json::parse(R"({"a": "x", "b": 0})"));
}

TEST(Json, PrintsSortedIndentedAndAlwaysAsUtf8) {
    const Json json{Json::Object{{"b", {0.5}}, {"B", {Json::Array{}}}, {"é\u0001\"", {nullptr}}}};
    EXPECT_EQ(json.print(), "{\n  \"B\": [],\n  \"b\": 0.5,\n  \"é\\u0001\\\"\": null\n}\n");
    EXPECT_EQ(Json{std::string{"a\xFFz"}}.print(), "\"a\uFFFDz\"\n");
    EXPECT_EQ((Json{Json::Object{{"\xC3", {true}}}}.print()), "{\n  \"\uFFFD\": true\n}\n");
}

}  // namespace
}  // namespace velko
