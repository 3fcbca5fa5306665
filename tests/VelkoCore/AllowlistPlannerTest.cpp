#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Visibility/RevealState.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"

namespace velko {
namespace {

const BundleID ownID = "app.velko";
const BundleID agent = "com.apple.MenuBarAgent";
const BundleID server = "com.apple.systemuiserver";

/// Everything that a plan is made of, with values that tests change.
struct Situation {
    Layout layout;
    RevealState state;
    BundleIDs inventory;
    BundleIDs shareKeep;
    RevealStyle style = RevealStyle::inline_;
    BundleIDs poppedOut;
    bool liveActivity = false;

    [[nodiscard]] VisibilityPlan plan() const {
        return AllowlistPlanner::plan({.layout = layout,
                                       .state = state,
                                       .inventory = inventory,
                                       .ownBundleID = ownID,
                                       .shareKeep = shareKeep,
                                       .style = style,
                                       .poppedOut = poppedOut,
                                       .liveActivity = liveActivity});
    }
};

TEST(VisibilityPlan, KeepsIdentifiersApart) {
    const auto plan = VisibilityPlan::allow({"b", "ab", "b", "", "abc"});
    EXPECT_EQ(plan.allowed(), (std::vector<BundleID>{"", "ab", "abc", "b"}));
    EXPECT_NE(plan, VisibilityPlan::allow({"", "a", "babc", "b"})) << "the same letters";
    for (const auto* hidden : {"a", "ba", "c", "bb"}) {
        EXPECT_TRUE(plan.hides(hidden)) << hidden;
    }
    EXPECT_TRUE(VisibilityPlan::allow({}).hides(""));
    EXPECT_NE(VisibilityPlan::allow({}), VisibilityPlan::showAll());
}

TEST(AllowlistPlanner, ListsWhatIsOutUntilNothingIsLeftToHide) {
    Situation situation;
    situation.layout.sections = {{"a.bar", Section::bar},
                                 {"b.absent", Section::bar},
                                 {"t.tucked", Section::tucked},
                                 {"z.buried", Section::buried},
                                 {agent, Section::buried}};
    situation.inventory = {"a.bar", "new", "t.tucked", "z.buried", agent};
    const std::string bar =
        "allow a.bar, app.velko, b.absent, com.apple.MenuBarAgent, com.apple.systemuiserver, new";
    EXPECT_EQ(describe(situation.plan()), bar);
    situation.state = RevealState::revealed();
    EXPECT_EQ(describe(situation.plan()), bar + ", t.tucked");
    situation.layout.sections["z.buried"] = Section::bar;  // A system item never counts as hidden.
    EXPECT_EQ(describe(situation.plan()), "show all");
    EXPECT_FALSE(situation.plan().hides("anything"));
}

TEST(AllowlistPlanner, ShowsOnlyTheAppThatIsLookedForAndTheFixedOnes) {
    EXPECT_EQ(AllowlistPlanner::showMe("z", ownID), VisibilityPlan::allow({ownID, agent, server, "z"}));
    EXPECT_EQ(AllowlistPlanner::showMe(server, ownID), VisibilityPlan::allow({ownID, agent, server}));
}

const BundleIDs everyone{agent, server, ownID, "Z", "a", "a.b", "a-b", "b", "c", "d", "e", "ü"};

class RandomSituation {
 public:
    explicit RandomSituation(std::uint32_t seed) : random_{seed} {}

    Situation next() {
        Situation situation;
        situation.layout.newIconDefault = section();
        for (auto count = random_() % 12; count > 0; --count) {
            situation.layout.sections[app()] = section();
        }
        situation.inventory = apps(12);
        situation.shareKeep = apps(3);
        situation.poppedOut = apps(3);
        situation.style = random_() % 2 == 0 ? RevealStyle::inline_ : RevealStyle::shelf;
        situation.liveActivity = random_() % 5 == 0;
        situation.state = state();
        return situation;
    }

    BundleID app() {
        return *std::next(everyone.begin(), static_cast<std::ptrdiff_t>(random_() % everyone.size()));
    }

 private:
    BundleIDs apps(unsigned most) {
        BundleIDs result;
        for (auto count = random_() % most; count > 0; --count) {
            result.insert(app());
        }
        return result;
    }

    Section section() { return allSections.at(random_() % allSections.size()); }

    RevealState state() {
        switch (random_() % 6) {
            case 0: return RevealState::revealed();
            case 1: return RevealState::revealedWithBuried();
            case 2: return RevealState::peeking(app(), state());
            case 3: return RevealState::shareSafe(RevealState::revealed());
            default: return RevealState::collapsed();
        }
    }

    std::mt19937 random_;
};

bool isCandidate(const Situation& situation, const BundleID& app) {
    return situation.inventory.contains(app) || situation.layout.sections.contains(app);
}

/// Whether the app's section is shown in a plain state. It states the rule a second time, app by app.
bool isSectionOut(const Situation& situation, const BundleID& app) {
    const bool out = situation.state == RevealState::revealed() && situation.style == RevealStyle::inline_;
    const Section section = situation.layout.section(app);
    return section == Section::bar || (section == Section::tucked && out);
}

bool showsEverything(const Situation& situation) {
    if (situation.style == RevealStyle::inline_ && situation.state == RevealState::revealedWithBuried()) {
        return true;
    }
    return std::ranges::all_of(everyone, [&](const BundleID& app) {
        return !isCandidate(situation, app) || app == agent || app == server || isSectionOut(situation, app);
    });
}

void expectPlainPlan(const Situation& situation, const VisibilityPlan& plan) {
    EXPECT_EQ(plan.isShowAll(), showsEverything(situation));
    if (plan.isShowAll()) {
        return;
    }
    for (const BundleID& app : everyone) {
        const bool fixed = app == ownID || app == agent || app == server;
        const bool out = isCandidate(situation, app) && isSectionOut(situation, app);
        EXPECT_EQ(plan.hides(app), !fixed && !out && !situation.poppedOut.contains(app)) << app;
    }
}

TEST(AllowlistPlanner, AgreesWithThePlainRulesInRandomSituations) {
    const auto seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomSituation random{seed};
    for (int round = 0; round < 5'000; ++round) {
        Situation situation = random.next();
        const VisibilityPlan plan = situation.plan();
        const auto* peek = situation.state.asPeeking();
        if (situation.state.asShareSafe() != nullptr) {
            std::vector<BundleID> expected{ownID, agent, server};
            expected.insert(expected.end(), situation.shareKeep.begin(), situation.shareKeep.end());
            EXPECT_EQ(plan, VisibilityPlan::allow(expected));
        } else if (situation.liveActivity) {
            EXPECT_TRUE(plan.isShowAll());
        } else if (peek != nullptr) {
            Situation ofBase = situation;
            ofBase.state = peek->base;
            const VisibilityPlan base = ofBase.plan();
            EXPECT_EQ(plan.isShowAll(), base.isShowAll());
            EXPECT_FALSE(plan.hides(peek->bundleID));
            if (!plan.isShowAll()) {
                std::vector<BundleID> expected = *base.allowed();
                expected.push_back(peek->bundleID);
                EXPECT_EQ(plan, VisibilityPlan::allow(expected));
            }
        } else {
            expectPlainPlan(situation, plan);
        }
        ASSERT_FALSE(HasFailure()) << "round " << round << ", " << describe(situation.state) << ": "
                                   << describe(plan);
    }
}

}  // namespace
}  // namespace velko
