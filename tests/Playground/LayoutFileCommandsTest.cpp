#include <gtest/gtest.h>

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

}  // namespace
}  // namespace velko::playground
