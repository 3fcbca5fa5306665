#include <gtest/gtest.h>
#include <sstream>

#include "Playground/Terminal/SortInTerminal.h"

namespace velko::playground {
namespace {

using Result = std::map<BundleID, Section>;

class SortInTerminalTest : public testing::Test {
 protected:
    bool walk(const std::string& keys) {
        std::istringstream stream(keys);
        return walkCards(session, stream, screen);
    }

    std::vector<SortSession::App> apps{
        {"com.example.a", "Apple Pie"}, {"com.example.b", "Banana"}, {"com.example.c", "Cherry"}};
    std::map<BundleID, Section> current{{"com.example.b", Section::buried}};
    SortSession session{{.apps = apps,
                         .lastClicked = {},
                         .current = current,
                         .importSource = std::nullopt,
                         .now = Date{},
                         .calendar = {}}};
    std::ostringstream screen;
};

TEST_F(SortInTerminalTest, WalksTheCardsBackAndForthWithTheirReasons) {
    EXPECT_TRUE(walk("x b t \x7F u r"));
    EXPECT_EQ(session.result(), (Result{{"com.example.a", Section::bar},
                                        {"com.example.b", Section::buried},
                                        {"com.example.c", Section::tucked}}));
    const std::string text = screen.str();
    EXPECT_NE(text.find("1 of 3  Apple Pie\n    tucked? Suggested by app type"), std::string::npos) << text;
    EXPECT_NE(text.find("2 of 3  Banana\n    buried? From your current layout"), std::string::npos) << text;
}

TEST_F(SortInTerminalTest, LeavesEverythingWhenTheUserDoesOrTheKeysEnd) {
    EXPECT_FALSE(walk("bq"));
    EXPECT_FALSE(walk("b"));
    EXPECT_FALSE(walk("\x03"));
}

}  // namespace
}  // namespace velko::playground
