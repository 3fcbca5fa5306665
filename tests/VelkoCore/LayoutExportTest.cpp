#include <gtest/gtest.h>

#include "VelkoCore/Layout/LayoutFormats.h"

namespace velko {
namespace {

const std::string whole =
    R"({"velkoLayout":1,"sections":{"A":"buried","N":"bar"},"alwaysKeep":["K"],"reveal":{"autoTuckSeconds":1},)"
    R"("newIconDefault":"tucked","askAboutNewIcons":false,"popOutOnChange":false,"showLiveActivities":false})";

/// The file with one piece of it replaced.
std::string wholeWith(const std::string& piece, const std::string& replacement) {
    const auto place = whole.find(piece);
    EXPECT_NE(place, std::string::npos) << piece;
    return std::string{whole}.replace(place, piece.size(), replacement);
}

TEST(LayoutExport, RefusesWhatIsNoExportBeforeLookingFurther) {
    const std::string notVelko = "This file isn't a Velko layout.";
    const std::string newer = "This layout comes from a newer Velko. Update Velko, then try again.";
    const std::vector<std::pair<std::string, std::string>> cases{
        {"", notVelko},
        {"not JSON", notVelko},
        {encodeLayout({}), notVelko},
        {wholeWith(R"("velkoLayout":1)", R"("velkoLayout":"1")"), notVelko},
        {wholeWith(R"("velkoLayout":1)", R"("velkoLayout":1.5)"), notVelko},
        {R"({"velkoLayout":9223372036854775807})", newer},
    };
    for (const auto& [file, words] : cases) {
        const auto read = LayoutExport::read(file);
        ASSERT_FALSE(read) << file;
        EXPECT_TRUE(std::holds_alternative<ImportError>(read.error())) << file;
        EXPECT_EQ(describe(read.error()), words) << file;
    }
}

TEST(LayoutExport, RequiresEveryKeyButTheNewestAndNamesTheOneAtFault) {
    for (const auto* key :
         {"sections", "alwaysKeep", "reveal", "newIconDefault", "askAboutNewIcons", "popOutOnChange"}) {
        const std::string quoted = "\"" + std::string{key} + '"';
        const auto read = LayoutExport::read(wholeWith(quoted, R"("other")"));
        ASSERT_FALSE(read) << key;
        ASSERT_TRUE(std::holds_alternative<DecodingError>(read.error())) << key;
        EXPECT_EQ(describe(read.error()),
                  "The file is damaged or incomplete (" + std::string{key} + ": missing).");
    }
    EXPECT_FALSE(LayoutExport::read(wholeWith(R"("buried")", R"("hidden")")));
    EXPECT_FALSE(LayoutExport::read(wholeWith(R"(:["K"])", ":null")));
    const auto older = LayoutExport::read(wholeWith(R"(,"showLiveActivities":false)", ""));
    ASSERT_TRUE(older);
    EXPECT_EQ(older->showLiveActivities, std::nullopt);
}

TEST(LayoutExport, MergesIntoALayoutAndLeavesItsHistoryAlone) {
    Layout layout;
    layout.sections = {{"A", Section::bar}, {"B", Section::tucked}};
    layout.inbox = {"N", "M"};
    layout.alwaysKeep = {"L"};
    layout.seenApps.reset();
    layout.clickDays = {{"A", {Date{}}}};
    layout.autopilot.offerPending = true;
    Layout expected = layout;
    expected.sections = {{"A", Section::buried}, {"B", Section::tucked}, {"N", Section::bar}};
    expected.inbox = {"M"};
    expected.alwaysKeep = {"K", "L"};
    expected.seenApps = {"A", "N"};
    expected.reveal.autoTuckSeconds = 3;
    expected.newIconDefault = Section::tucked;
    expected.askAboutNewIcons = false;
    expected.popOutOnChange = false;
    expected.showLiveActivities = false;
    expected.hasCompletedSetup = true;
    layout.apply(LayoutExport::read(whole).value());
    EXPECT_EQ(layout, expected);
    layout.apply(LayoutExport::read(wholeWith(R"(,"showLiveActivities":false)", "")).value());
    EXPECT_EQ(layout, expected) << "an older file leaves Live Activities as they were";
}

TEST(LayoutExport, ComesBackAsItWentOutWithoutAnythingPersonal) {
    Layout layout;
    layout.sections = {{"A", Section::buried}};
    layout.alwaysKeep = {"K"};
    layout.reveal = {.autoTuckSeconds = 0,
                     .notchedStyle = RevealStyle::inline_,
                     .otherStyle = RevealStyle::shelf,
                     .hover = true};
    layout.lastClicked = {{"secret", Date{}}};
    layout.showLiveActivities = false;
    layout.leaveNewIconsOut = true;
    layout.neverPopOut = {"A"};
    layout.shelfWhenFull = false;
    layout.showAllFromWidth = 2560;
    layout.quietUntil = {{"secret", Date{}}};
    const std::string data = LayoutExport::of(layout).data();
    EXPECT_EQ(data.find("secret"), std::string::npos);
    const auto read = LayoutExport::read(data);
    ASSERT_TRUE(read) << describe(read.error());
    EXPECT_EQ(*read, LayoutExport::of(layout));
    Layout fresh;
    fresh.apply(*read);
    EXPECT_EQ(LayoutExport::of(fresh), LayoutExport::of(layout));
    fresh.place("N", Section::tucked);
    fresh.inbox = {"N"};
    fresh.leaveNewIconsOut = false;
    fresh.apply(*read);
    EXPECT_EQ(fresh.section("N"), Section::bar) << "it waits where the user of the other Mac wants that";
    const std::string plain = LayoutExport::of(Layout()).data();
    EXPECT_EQ(plain.find("leaveNewIconsOut"), std::string::npos) << "as older builds wrote it";
    for (const char* const addition : {"neverPopOut", "shelfWhenFull", "showAllFromWidth"}) {
        EXPECT_EQ(plain.find(addition), std::string::npos) << addition;
    }
}

}  // namespace
}  // namespace velko
