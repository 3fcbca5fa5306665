#include <chrono>
#include <gtest/gtest.h>
#include <thread>

#include "Simulator/MenuBar/SimulatedFramework.h"
#include "VelkoEngine/Hiding/MenuBarEngine.h"
#include "tests/VelkoEngine/FaultyFramework.h"

namespace velko {
namespace {

using namespace std::chrono_literals;
using Activated = PrivateFramework::Activated;
using Strings = std::vector<std::string>;

const auto onlyA = VisibilityPlan::allow({"a"});
const auto onlyB = VisibilityPlan::allow({"b"});
const auto nothing = VisibilityPlan::allow({});
const auto everything = VisibilityPlan::showAll();

/// An engine on a Mac with the apps "a" and "b" in its menu bar, and what the engine has reported.
class AssessmentEngineTest : public testing::Test {
 protected:
    AssessmentEngineTest() {
        mac.launch({.bundleID = "b", .name = "B", .icons = {{}}});
        mac.launch({.bundleID = "a", .name = "A", .icons = {{}}});
    }

    void apply(const VisibilityPlan& plan, bool force = false) {
        engine->apply(plan, force, [this, plan](const MenuBarEngine::Result& result) {
            const auto text = result ? std::to_string(*result / 1ms) : describe(result.error());
            reports.push_back(describe(plan) + ": " + text);
        });
    }

    /// Waits until everything has been answered, and returns what was reported since the last call.
    Strings settle() {
        mac.advance(1s);
        return std::exchange(reports, {});
    }

    /// The apps that a person sees. "?" when the engine says something else, "!" when hiding was off for a
    /// moment.
    [[nodiscard]] std::string visible() const {
        std::string apps;
        for (const BundleID& owner : mac.visibleIcons()) {
            apps += owner == "a" || owner == "b" ? owner : "";
        }
        const bool isHiding = mac.framework.activeAssertions() == 1;
        return apps + (isHiding == !engine->current().isShowAll() ? "" : "?") +
               (mac.framework.gaps().empty() ? "" : "!");
    }

    SimulatedMac mac;
    FaultyFramework framework{mac.framework};
    std::unique_ptr<AssessmentEngine> engine = std::make_unique<AssessmentEngine>(framework.on(mac));
    Strings reports;
};

TEST_F(AssessmentEngineTest, HidesEveryAppThatThePlanLeavesOutButNoSystemItem) {
    const auto systemItems = mac.visibleSystemItems();
    for (const auto& [plan, seen] : {std::pair(onlyA, "a"), std::pair(nothing, ""), std::pair(onlyB, "b")}) {
        apply(plan);
        EXPECT_EQ(settle(), Strings{describe(plan) + ": 40"});
        EXPECT_EQ(visible(), seen);
        EXPECT_EQ(engine->current(), plan);
    }
    EXPECT_EQ(mac.visibleSystemItems(), systemItems);
    EXPECT_EQ(mac.framework.inForce().value_or(SimulatedAllowlist{}).systemItems.size(), 64U);
    apply(onlyB);
    apply(onlyB, true);
    EXPECT_EQ(mac.framework.activations(), 4U);
    EXPECT_EQ(settle(), (Strings{"allow b: 0", "allow b: 40"}));
    EXPECT_EQ(visible(), "b");
    apply(everything);
    EXPECT_EQ(visible(), "ab");
    EXPECT_EQ(settle(), Strings{"show all: 0"});
}

TEST_F(AssessmentEngineTest, LetsOnlyTheNewestRequestWinWhateverTheOrderOfAnswers) {
    for (const auto& [first, second] :
         {std::pair(40ms, 40ms), std::pair(90ms, 10ms), std::pair(10ms, 90ms)}) {
        apply(nothing);
        settle();
        mac.framework.answerDelay = first;
        apply(onlyA);
        mac.framework.answerDelay = second;
        apply(onlyB);
        EXPECT_EQ(settle(), Strings{"allow b: " + std::to_string(second.count())});
        EXPECT_EQ(visible(), "b");
    }
    for (const auto& [plan, seen] : {std::pair(onlyB, "b"), std::pair(everything, "ab")}) {
        apply(onlyA);
        apply(plan);
        EXPECT_EQ(settle(), Strings{describe(plan) + ": 0"});
        EXPECT_EQ(visible(), seen);
    }
}

TEST_F(AssessmentEngineTest, ShowsEverythingAfterAnyFailureThoughIconsWereHidden) {
    const std::pair<const char*, void (*)(SimulatedFramework&)> faults[] = {
        {"not now", [](auto& each) { each.refusal = FrameworkError{"MBError", 7, "not now"}; }},
        {"NSException: no", [](auto& each) { each.exception = RaisedException{"NSException", "no"}; }},
        {"Menu bar hiding is not supported on this macOS build", [](auto& each) { each.classes.clear(); }}};
    for (const auto& [report, breakIt] : faults) {
        apply(onlyA);
        settle();
        breakIt(mac.framework);
        apply(onlyB);
        EXPECT_EQ(settle(), Strings{std::string("allow b: ") + report});
        EXPECT_EQ(visible().substr(0, 2), "ab");
        EXPECT_EQ(engine->current(), everything);
        mac.framework.refusal.reset();
        mac.framework.exception.reset();
    }
}

TEST_F(AssessmentEngineTest, ReportsOnceHoweverAndWhereverTheFrameworkAnswers) {
    framework.tamper = [](const Activated& answer) -> Activated {
        return [answer](const auto& error) {
            std::thread elsewhere([&] { answer(error); });
            std::thread([&] { answer(error); }).join();
            elsewhere.join();
            answer(FrameworkError{});
        };
    };
    apply(onlyA);
    EXPECT_EQ(settle(), Strings{"allow a: 40"});
    EXPECT_EQ(visible(), "a");
    framework.tamper = [](const Activated&) -> Activated { return [](const auto&) {}; };
    apply(onlyB);
    EXPECT_EQ(reports, Strings{});
    EXPECT_EQ(settle(), Strings{"allow b: macOS refused the hiding request"});
    EXPECT_EQ(visible(), "ab");
}

TEST_F(AssessmentEngineTest, GoesOnWithTheNextRequestWhenAnAnswerNeverComes) {
    std::vector<Activated> kept;
    framework.tamper = [&kept](const Activated& answer) -> Activated {
        kept.push_back(answer);
        return [](const auto&) {};
    };
    apply(onlyA);
    mac.advance(60s);
    EXPECT_EQ(settle(), Strings{});
    framework.tamper = nullptr;
    apply(onlyB);
    EXPECT_EQ(settle(), Strings{"allow b: 40"});
    kept.front()(std::nullopt);
    EXPECT_EQ(settle(), Strings{});
    EXPECT_EQ(visible(), "b");
}

TEST_F(AssessmentEngineTest, LeavesEverythingShownWhenItEndsEvenWithinACompletion) {
    engine->apply(onlyA, false, [this](const auto&) {
        apply(nothing);
        engine->apply(onlyB, false, [this](const auto&) {
            apply(onlyA);
            engine.reset();
        });
    });
    EXPECT_EQ(settle(), Strings{});
    EXPECT_EQ(engine, nullptr);
    EXPECT_EQ(mac.visibleIcons().size(), 3U);
    EXPECT_EQ(mac.framework.activations(), 4U);
    EXPECT_EQ(mac.framework.invalidations(), 4U);
    EXPECT_TRUE(mac.framework.gaps().empty());
}

}  // namespace
}  // namespace velko
