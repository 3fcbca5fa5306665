#include <algorithm>
#include <gtest/gtest.h>

#include "Simulator/MenuBar/SimulatedFramework.h"
#include "VelkoEngine/Hiding/VKAssessment.h"
#include "VelkoEngine/Ports/Platform.h"
#include "tests/VelkoEngine/FaultyFramework.h"

namespace velko {
namespace {

using Strings = std::vector<std::string>;

class VKAssessmentTest : public testing::Test {
 protected:
    /// Waits for the outcome of an activation and returns it as a line.
    std::string activate() {
        std::string line;
        VKAssessment::activate(platform, {0}, {"a"}, [&](const VKAssessment::Activation& outcome) {
            line += outcome.assertion ? "in force" : "";
            line += outcome.error ? outcome.error->domain + std::to_string(outcome.error->code) + ": " +
                                        outcome.error->description
                                  : "";
        });
        EXPECT_EQ(line, "");
        mac.advance(std::chrono::seconds(1));
        return line;
    }

    SimulatedMac mac;
    FaultyFramework framework{mac.framework};
    Platform platform = framework.on(mac);
};

TEST_F(VKAssessmentTest, IsAvailableOnlyWhenNothingOfTheFrameworkIsMissing) {
    EXPECT_TRUE(VKAssessment::isAvailable(platform));
    const auto usual = mac.framework.classes;
    for (const char* const selector : {"initWithAllowedSystemItems:allowedBundleIdentifiers:",
                                       "activateWithConfiguration:completionHandler:", "invalidate"}) {
        for (auto& [name, methods] : mac.framework.classes) {
            std::erase_if(methods, [&](const auto& method) { return method.selector == selector; });
        }
        EXPECT_FALSE(VKAssessment::isAvailable(platform)) << selector;
        mac.framework.classes = usual;
    }
    mac.framework.installed = false;
    EXPECT_EQ(activate(), "VKAssessment1: MenuBarClientCore is unavailable on this macOS build");
}

TEST_F(VKAssessmentTest, TurnsWhateverGoesWrongIntoOneLaterAnswerOrALogLine) {
    EXPECT_EQ(activate(), "in force");
    framework.makesAssertions = false;
    EXPECT_EQ(activate(), "VKAssessment1: Could not create the assessment configuration");
    framework.makesAssertions = true;
    mac.framework.exception = RaisedException{"NSException", "no"};
    EXPECT_EQ(activate(), "VKAssessment1: NSException: no");
    framework.raised = RaisedException{"NSRangeException", "too far"};
    VKAssessment::invalidate(platform, nullptr);
    EXPECT_EQ(mac.framework.systemLogLines(),
              Strings{"VKAssessment: invalidate raised NSRangeException: too far"});
}

TEST_F(VKAssessmentTest, EndsAnAssertionThatComesIntoForceAfterAll) {
    framework.raisedByActivating = RaisedException{"NSException", "no"};
    EXPECT_EQ(activate(), "VKAssessment1: NSException: no");
    EXPECT_EQ(mac.framework.activations(), 1U);
    EXPECT_EQ(mac.framework.activeAssertions(), 0U);
}

TEST_F(VKAssessmentTest, LetsGoOfEachAssertionThoughTheFrameworkKeepsItsHandlers) {
    std::vector<PrivateFramework::Activated> kept;
    framework.tamper = [&](const PrivateFramework::Activated& answer) { return kept.emplace_back(answer); };
    EXPECT_EQ(activate(), "in force");
    mac.framework.refusal = FrameworkError{"MBError", 7, "no"};
    EXPECT_EQ(activate(), "MBError7: no");
    mac.framework.refusal.reset();
    framework.raisedByActivating = RaisedException{"NSException", "no"};
    EXPECT_EQ(activate(), "VKAssessment1: NSException: no");
    ASSERT_EQ(framework.made.size(), 3U);
    EXPECT_TRUE(std::ranges::all_of(framework.made, &std::weak_ptr<PrivateFramework::Object>::expired));
    EXPECT_EQ(mac.framework.activeAssertions(), 0U);
}

TEST_F(VKAssessmentTest, ProbesWhatTheFrameworkHasAndLacks) {
    mac.framework.classes["MBAssessmentModeAssertion"] = {
        {false, "invalidate", "v"}, {false, "begin", "@?"}, {true, "zone", "v16@0:8"}};
    const auto report = VKAssessment::probeReport(platform);
    EXPECT_EQ(report.image, mac.framework.image);
    EXPECT_EQ(report.classes.size(), 2U);
    EXPECT_EQ(report.classes.at("MBAssessmentModeAssertion"),
              (Strings{"+zone (v16@0:8)", "-begin (@?)", "-invalidate (v)"}));
    auto& classes = mac.framework.classes;
    const auto all = classes;
    for (const auto& gone : {"MBAssessmentModeConfiguration", "MBAssessmentModeAssertion"}) {
        classes.erase(gone);
        classes[std::string(gone) + "2"];
        EXPECT_EQ(VKAssessment::probeReport(platform).classes.size(), 2U)
            << "renamed, and listed all the same";
    }
    classes = all;
    framework.raised = RaisedException{"NSRangeException", "too far"};
    EXPECT_EQ(engineProbeReport(platform),
              "loaded: true\n"
              "error: NSRangeException: too far\n"
              "OK   framework loads (dlopen)\n"
              "OK   MBAssessmentModeConfiguration\n"
              "OK   MBAssessmentModeAssertion\n"
              "OK   -[MBAssessmentModeConfiguration initWithAllowedSystemItems:allowedBundleIdentifiers:]\n"
              "FAIL -[MBAssessmentModeAssertion activateWithConfiguration:completionHandler:]\n"
              "OK   -[MBAssessmentModeAssertion invalidate]");
    mac.framework.installed = false;
    mac.framework.loadError.clear();
    EXPECT_EQ(VKAssessment::probeReport(mac.platform()).loadError, "unknown");
}

}  // namespace
}  // namespace velko
