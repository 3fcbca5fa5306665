#include <gtest/gtest.h>
#include <sstream>

#include "Playground/Terminal/LayoutFileCommands.h"
#include "Scenarios/SampleApps.h"
#include "VelkoCore/Layout/LayoutStore.h"
#include "tests/TemporaryFolder.h"

namespace velko::playground {
namespace {

TEST(LayoutFileCommands, TravelsToAnotherMacAndKeepsWhatTheFileDoesNotName) {
    const TemporaryFolder folder;
    const auto here = folder.path() / "here" / "layout.json";
    const auto there = folder.path() / "there" / "layout.json";
    const auto file = folder.path() / "My Velko Layout.velko";
    ASSERT_EQ(loadLayoutFile(here, true), scenarios::firstLayout());
    EXPECT_EQ(exportLayoutFile(scenarios::firstLayout(), file), 0);

    Layout other;
    other.place("com.example.only.there", Section::buried);
    other.place("us.zoom.xos", Section::buried);
    EXPECT_EQ(importIntoLayoutFile(other, there, file), 0);
    const auto merged = loadLayoutFile(there, false);
    ASSERT_TRUE(merged);
    EXPECT_EQ(merged->section("com.example.only.there"), Section::buried);
    EXPECT_EQ(merged->section("us.zoom.xos"), Section::bar);
    EXPECT_TRUE(merged->hasCompletedSetup);
    const auto earlier = LayoutStore(there).history().list().value();
    ASSERT_EQ(earlier.size(), 1U);
    EXPECT_EQ(earlier[0].layout, other) << "the way back";
    EXPECT_EQ(earlier[0].entry.cause, HistoryCause::import);
}

TEST(LayoutFileCommands, StaysAsItIsWhenAFileIsRefused) {
    const TemporaryFolder folder;
    const auto layout = folder.path() / "layout.json";
    const auto file = folder.path() / "other.velko";
    for (const char* const content : {"{}", "nonsense", R"({"velkoLayout": 2})", R"({"velkoLayout": 1})"}) {
        writeFile(file, content);
        EXPECT_EQ(importIntoLayoutFile({}, layout, file), 1) << content;
    }
    EXPECT_EQ(importIntoLayoutFile({}, layout, folder.path() / "missing.velko"), 1);
    EXPECT_FALSE(std::filesystem::exists(layout));
    writeFile(layout, "nonsense");
    EXPECT_EQ(loadLayoutFile(layout, true), std::nullopt);
    EXPECT_EQ(contentOf(layout), "nonsense");
}

using Result = std::map<BundleID, Section>;

class SortLayoutFileTest : public testing::Test {
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

TEST_F(SortLayoutFileTest, WalksTheCardsBackAndForthWithTheirReasons) {
    EXPECT_TRUE(walk("x b t \x7F u r"));
    EXPECT_EQ(session.result(), (Result{{"com.example.a", Section::bar},
                                        {"com.example.b", Section::buried},
                                        {"com.example.c", Section::tucked}}));
    const std::string text = screen.str();
    EXPECT_NE(text.find("1 of 3  Apple Pie\n    tucked? Suggested by app type"), std::string::npos) << text;
    EXPECT_NE(text.find("2 of 3  Banana\n    buried? From your current layout"), std::string::npos) << text;
}

TEST_F(SortLayoutFileTest, LeavesEverythingWhenTheUserDoesOrTheKeysEnd) {
    EXPECT_FALSE(walk("bq"));
    EXPECT_FALSE(walk("b"));
    EXPECT_FALSE(walk("\x03"));
}

}  // namespace
}  // namespace velko::playground
