#include <algorithm>
#include <iterator>

#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "Velko/App/Health.h"
#include "tests/Velko/SetupOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

class SetupSortingTest : public SetupOfThreeApps {
 protected:
    /// What the setup says of another organiser's settings, line by line.
    [[nodiscard]] std::vector<std::string> whatIsFound() {
        std::vector<std::string> lines;
        for (const char* list : {"found:along", "found:behind"}) {
            std::ranges::copy(reading(*view::find(*window().content(), list)), std::back_inserter(lines));
        }
        return lines;
    }
};

TEST_F(SetupSortingTest, TakesOverWhatAnotherOrganiserLeftOnlyWhenTheUserWantsIt) {
    struct Left {
        std::optional<std::int64_t> seconds;
        std::string timeLine;
        std::optional<bool> hover;
        std::string hoverLine;
    };
    const std::string unsaidTime = "How long icons stay out: Ice doesn't say";
    const std::string unsaidHover = "Whether resting the pointer shows them: Ice doesn't say";
    const Left cases[] = {
        {15, "Icons stay out for 15 seconds", true, "Icons come out when the pointer rests on the broom"},
        {0, "Icons stay out until you tuck them", {}, unsaidHover},
        {{}, unsaidTime, false, "Icons come out only when you click the broom"},
        {{}, unsaidTime, {}, unsaidHover}};
    for (const auto& [seconds, timeLine, hover, hoverLine] : cases) {
        for (const bool takes : {false, true}) {
            SCOPED_TRACE(testing::Message()
                         << timeLine << ", " << hoverLine << (takes ? ", taken" : ", left"));
            mac.surfaces.forget();
            host.found =
                ImportedLayout{.source = "Ice", .sections = {}, .autoTuckSeconds = seconds, .hover = hover};
            startSorting();
            EXPECT_EQ(words("found:title"), "You come from Ice");
            std::vector<std::string> lines{"Comes along"};
            const auto add = [&](bool isLeft) {
                if (seconds.has_value() == isLeft) {
                    lines.push_back(timeLine);
                }
                if (hover.has_value() == isLeft) {
                    lines.push_back(hoverLine);
                }
            };
            add(true);
            const bool hasTiming = lines.size() > 1;
            if (!hasTiming) {
                lines.emplace_back("Nothing that would fit your menu bar");
            }
            lines.insert(lines.end(),
                         {"Stays behind", "The places of your icons: you sort them card by card"});
            add(false);
            lines.emplace_back("Single icons, hot keys and colours: Velko hides whole apps");
            EXPECT_EQ(whatIsFound(), lines);
            EXPECT_EQ(words("found:go"), hasTiming ? "" : "Continue");
            EXPECT_TRUE(hasTiming && !takes ? press('k') : press(Key::enter));
            EXPECT_EQ(proposed(), "vpn: Keep in the Bar, proposed");
            close();
            setup->show();
            EXPECT_EQ(step(), "setup:sort") << "that was answered before the window closed";
            EXPECT_TRUE(press('r'));
            EXPECT_EQ(words("summary:later").starts_with("With Ice's timing. "), takes && hasTiming);
            EXPECT_EQ(values().layout.reveal, RevealSettings());
            EXPECT_TRUE(press(Key::enter));
            pass(1s);
            EXPECT_EQ(saved().reveal.autoTuckSeconds, takes ? seconds.value_or(6) : 6);
            EXPECT_EQ(saved().reveal.hover, takes && hover.value_or(false));
        }
    }
}

TEST_F(SetupSortingTest, ProposesThePlacesThatAnotherOrganiserLeft) {
    host.found = ImportedLayout{.source = "Bartender",
                                .sections = {{"com.example.vpn", Section::buried},
                                             {"com.example.gone", Section::bar},
                                             {"com.example.rare", Section::tucked},
                                             {"com.apple.systemuiserver", Section::buried}},
                                .autoTuckSeconds = {},
                                .hover = {}};
    startSorting();
    EXPECT_EQ(whatIsFound(),
              (std::vector<std::string>{
                  "Comes along", "The places of 1 app: 0 in the bar, 0 tucked, 1 buried", "Stays behind",
                  "2 apps without an icon now: you sort them when they move in",
                  "How long icons stay out: Bartender doesn't say",
                  "Whether resting the pointer shows them: Bartender doesn't say",
                  "Single icons, hot keys and colours: Velko hides whole apps"}))
        << "no more than the cards propose";
    EXPECT_TRUE(press(Key::enter));
    EXPECT_EQ(card(), "1 of 3 vpn: From Bartender");
    EXPECT_EQ(words("sort:buried"), "vpn: Bury, proposed");
    EXPECT_TRUE(press(Key::leftArrow));
    EXPECT_EQ(step(), "setup:found");
}

TEST_F(SetupSortingTest, BeginsWithTheCardsWhenTheUserSortsAgain) {
    layout.hasCompletedSetup = true;
    layout.place("com.example.vpn", Section::tucked);
    mac.grantTrust();
    startSetup();
    EXPECT_EQ(window().opening()->title, "Sort Your Menu Bar");
    EXPECT_EQ(card(), "1 of 3 vpn: From your current layout");
    EXPECT_FALSE(press(Key::leftArrow)) << "there is nothing before the first card";
    setup->show();
    EXPECT_EQ(window().raised(), 1);
    EXPECT_EQ(view::find(*window().content(), "setup:back"), nullptr);
    pass(1s);
    const std::size_t said = mac.surfaces.announcements().size();
    launch("org.other.late");
    pass(30s);
    EXPECT_EQ(mac.surfaces.announcements().size(), said) << "the card is the same";
    EXPECT_TRUE(press('1'));
    EXPECT_EQ(mac.surfaces.announcements().size(), said + 1);
    EXPECT_TRUE(press('r') && press(Key::enter));
    pass(1s);
    EXPECT_TRUE(shows("com.example.vpn"));
    EXPECT_FALSE(shows("com.example.chat"));
    EXPECT_EQ(step(), "setup:done");
    setup->show();
    EXPECT_EQ(card(), "1 of 3 vpn: From your current layout") << "a new sort begins anew";
}

TEST_F(SetupSortingTest, ForgetsAnswersThatAreOlderThanWhereTheUserPutTheApp) {
    layout.hasCompletedSetup = true;
    layout.askAboutNewIcons = false;
    layout.place("com.example.vpn", Section::bar);
    layout.place("com.example.clock", Section::tucked);
    mac.grantTrust();
    startSetup();
    EXPECT_TRUE(press('1') && press('r'));
    close();
    velko->place("com.example.vpn", Section::buried);
    setup->show();
    EXPECT_EQ(card(), "1 of 3 vpn: From your current layout") << "answered, and placed by hand since";
    EXPECT_EQ(proposed(), "vpn: Bury, proposed");
    EXPECT_TRUE(press(Key::enter) && press('r'));
    velko->place("com.example.clock", Section::bar);
    pass(100ms);
    EXPECT_EQ(card(), "2 of 3 clock: From your current layout") << "the window is open all the while";
    EXPECT_TRUE(press('r'));
    close();
    velko->open("com.example.chat");
    setup->show();
    EXPECT_EQ(card(), "3 of 3 chat: Last clicked today") << "accepted, when the suggestion was another";
    EXPECT_TRUE(press(Key::enter) && press(Key::enter));
    pass(1s);
    EXPECT_EQ(saved().sections, (std::map<BundleID, Section>{{"com.example.chat", Section::bar},
                                                             {"com.example.clock", Section::bar},
                                                             {"com.example.vpn", Section::buried}}));
}

TEST_F(SetupSortingTest, TellsWhatIsOutOfSight) {
    layout.hasCompletedSetup = true;
    mac.launch({.bundleID = "com.example.two", .name = "two", .icons = {{.title = "a"}, {.title = "b"}}});
    mac.grantTrust();
    const auto sortAll = [&](char key) {
        setup->show();
        while (step() == "setup:sort") {
            EXPECT_TRUE(press(key));
        }
        EXPECT_TRUE(press(Key::enter));
        pass(1s);
        return words("done:title") + ": " + words("done:where");
    };
    startSetup();
    EXPECT_EQ(sortAll('2'), "Your menu bar is tidy: 5 icons are behind the broom. Click it to see them.");
    EXPECT_EQ(words("done:else"), "You can change any of it later, in the settings.");
    EXPECT_EQ(sortAll('3'), "Your menu bar is tidy: 5 icons are buried. Option-click the broom to see them.");
    EXPECT_EQ(sortAll('1'), "Your menu bar is tidy: Every icon stays in the bar.");
    mac.framework.refusal = FrameworkError{.domain = "test", .code = 1, .description = "not today"};
    EXPECT_EQ(sortAll('2'), "Your icons are sorted: " + std::string(refusalInWords));
}

}  // namespace
}  // namespace velko
