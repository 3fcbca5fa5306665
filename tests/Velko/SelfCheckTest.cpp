#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Desktop/SimulatedPointer.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "Velko/Checks/LayoutAudit.h"
#include "Velko/Checks/SelfCheck.h"
#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoCore/Files/Json.h"
#include "tests/Velko/SelfCheckOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;
using SelfCheck::Command;
using SelfCheck::Option;
using SelfCheckTest = SelfCheckOnMac;

TEST_F(SelfCheckTest, FindsAMacInOrderAndChangesNothing) {
    const auto iconsBefore = mac.visibleIcons();
    EXPECT_EQ(failures(), Lines{}) << all();
    EXPECT_EQ(mac.visibleIcons(), iconsBefore);
    EXPECT_EQ(mac.cost().engineCalls, 0U);
    EXPECT_EQ(mac.workspace.openedURLs(), std::vector<std::string>{});
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
    EXPECT_TRUE(says("TOLD com.example.chat, 2 icons: ")) << all();
    EXPECT_TRUE(says("OK   a hit on the icon of com.example.mail"));
    EXPECT_TRUE(lines.back().find(" 0 FAIL, ") != std::string::npos &&
                lines.back().find("left out: hiding (--try-hiding), icon (--windows)") != std::string::npos)
        << lines.back();
}

TEST_F(SelfCheckTest, NeverMakesTheSystemAsk) {
    for (const bool isSaid : {true, false}) {
        for (const bool isReal : {true, false}) {
            isSaid ? mac.grantTrust() : mac.revokeTrust();
            isReal ? mac.grantTrust(false) : mac.revokeTrust(false);
            EXPECT_EQ(failures().empty(), isSaid == isReal) << all();
            EXPECT_EQ(says("FAIL the system and other apps agree"), isSaid != isReal) << all();
            EXPECT_EQ(says("TOLD com.example.mail, 1 icons"), isSaid && isReal) << all();
            EXPECT_EQ(mac.pointer.inputMonitoringPrompts(), 0);
            EXPECT_EQ(mac.accessibility.prompts(), 0);
        }
    }
    mac.grantTrust();
    mac.pointer.refusesTaps = true;
    failures({}, "permission");
    EXPECT_TRUE(says("FAIL a click tap is installed and switched on: refused"));
}

TEST_F(SelfCheckTest, SaysWhatIsMissing) {
    mac.framework.installed = false;
    mac.setDisplays({});
    mac.hang(chat, true);
    logFile = "/proc/nobody/Velko.log";
    const Lines failed = failures();
    const auto has = [&](const std::string& line) { return std::ranges::count(failed, line) == 1; };
    EXPECT_TRUE(has("FAIL framework loads (dlopen)")) << all();
    EXPECT_TRUE(has("FAIL screens are listed"));
    EXPECT_TRUE(says("FAIL the log's folder is writable") || ::access("/proc", W_OK) == 0);
    EXPECT_TRUE(says("TOLD the loader's words: image not found"));
    EXPECT_TRUE(says("TOLD cannotComplete: com.example.chat")) << all();
}

TEST_F(SelfCheckTest, TellsWhoAnswersForAnIcon) {
    mac.setHitsEndAtHost(false);
    EXPECT_EQ(failures({}, "menu bar"), Lines{}) << all();
    EXPECT_TRUE(
        says("OK   a hit on the icon of com.example.mail finds the app or the menu bar's host: the app"));
    accessibility.stray = chat;
    EXPECT_EQ(failures({}, "menu bar").size(), 3U) << all();
    EXPECT_TRUE(
        says("FAIL a hit on the icon of com.example.mail finds the app or the menu bar's host: "
             "com.example.chat"));
    accessibility.stray.reset();
    mac.quit(mac.menuBarHost());
    mac.advance(1s);
    failures({}, "menu bar");
    EXPECT_TRUE(says("FAIL the menu bar's host tells whose icons show")) << all();
}

TEST_F(SelfCheckTest, ComparesTheFrameworksTypesWithOurCalls) {
    for (auto& [name, methods] : mac.framework.classes) {
        for (RuntimeMethod& method : methods) {
            if (method.selector == "invalidate") {
                method.typeEncoding = "v24@0:8@16";
            }
        }
    }
    EXPECT_EQ(failures({}, "framework"),
              Lines{"FAIL types of -[MBAssessmentModeAssertion invalidate]: v24@0:8@16"});
}

TEST(LayoutAudit, FindsWhatIsWrongWithALayout) {
    const LayoutAudit::Measured root{.id = "root", .frame = {.x = 0, .y = 0, .width = 100, .height = 100}};
    const auto child = [](const char* id, Rect frame) {
        return LayoutAudit::Measured{.id = id, .parent = 0, .frame = frame};
    };
    const auto good = child("a", {.x = 10, .y = 10, .width = 50, .height = 20});
    auto ambiguous = good;
    ambiguous.isAmbiguous = true;
    auto cut = good;
    cut.needed = {.width = 51.6, .height = 20};
    auto low = good;
    low.needed = {.width = 0, .height = 40};
    auto scroll = root;
    scroll.clips = true;
    const auto outside = child("b", {.x = 10, .y = 90, .width = 50, .height = 20});
    const auto over = child("b", {.x = 50, .y = 20, .width = 20, .height = 20});
    const auto beside = child("b", {.x = 60, .y = 10, .width = 20, .height = 20});
    using Texts = std::vector<std::string>;
    EXPECT_EQ(LayoutAudit::faults({}), Texts{"nothing was drawn"});
    EXPECT_EQ(LayoutAudit::faults({root, good, beside}), Texts{});
    EXPECT_EQ(LayoutAudit::faults({root, ambiguous}), Texts{"a could be placed in another way"});
    EXPECT_EQ(LayoutAudit::faults({root, cut}), Texts{"a is cut: it needs 52x20 and has 50x20"});
    EXPECT_EQ(LayoutAudit::faults({root, low}), Texts{"a is cut: it needs 0x40 and has 50x20"});
    EXPECT_EQ(LayoutAudit::faults({root, outside}), Texts{"b at 10,90 50x20 is outside root at 0,0 100x100"});
    EXPECT_EQ(LayoutAudit::faults({scroll, outside}), Texts{});
    EXPECT_EQ(LayoutAudit::faults({root, good, over}), Texts{"b lies over a"});
    EXPECT_EQ(LayoutAudit::differences({root, good}, {root, good}), Texts{});
    EXPECT_EQ(LayoutAudit::differences({root, good}, {root}), (Texts{"2 views, and then 1", "a is gone"}));
    EXPECT_EQ(LayoutAudit::differences({root, beside}, {root, over}),
              Texts{"b was at 60,10 20x20, and then at 50,20 20x20"});
}

TEST_F(SelfCheckTest, VerifiesTheSignature) {
    bench.verified = SelfCheck::Bench::ToolRun{.status = 1, .output = "a sealed resource is missing\n"};
    bench.identifier = "Identifier=velko\n";
    EXPECT_EQ(failures({}, "signature"),
              (Lines{"FAIL the bundle is sealed: a sealed resource is missing ",
                     "FAIL the signature has the bundle's identifier: Identifier=velko "}));
    bench.verified.reset();
    EXPECT_EQ(failures({}, "signature"), Lines{});
}

TEST_F(SelfCheckTest, WritesWhatItFoundAsJson) {
    jsonFile = folder.path() / "found.json";
    EXPECT_EQ(failures(), Lines{});
    const auto text = AtomicFile::read(jsonFile);
    ASSERT_TRUE(text && *text);
    const auto json = Json::parse(**text);
    ASSERT_TRUE(json) << json.error().description;
    const auto& root = std::get<Json::Object>(json->value);
    EXPECT_EQ(root.at("velkoSelfCheck"), Json{std::uint64_t{1}});
    EXPECT_EQ(root.at("isComplete"), Json{true});
    EXPECT_EQ(root.at("failed"), Json{std::uint64_t{0}});
    const auto& list = std::get<Json::Array>(root.at("sections").value);
    EXPECT_EQ(list.size(), SelfCheck::sections().size());
    EXPECT_EQ(
        std::ranges::count_if(
            list, [](const Json& each) { return std::get<Json::Object>(each.value).contains("needs"); }),
        std::ranges::count_if(SelfCheck::sections(),
                              [](const auto& each) { return each.needs != Option::none; }));
    jsonFile = logFile / "below-a-file.json";
    std::ignore = AtomicFile::replace(logFile, "a file");
    EXPECT_EQ(failures().size(), 1U) << all();
}

TEST(SelfCheckCommand, IsReadFromTheCommandLine) {
    using Kind = Command::Kind;
    const Command usage{.kind = Kind::usage};
    EXPECT_EQ(SelfCheck::parse({}), Command{});
    EXPECT_EQ(SelfCheck::parse({"-NSDocumentRevisionsDebugMode", "YES"}), Command{});
    EXPECT_EQ(SelfCheck::parse({"--self-check"}), (Command{.kind = Kind::check}));
    EXPECT_EQ(SelfCheck::parse({"--self-check", "--json", "a.json", "--try-hiding"}),
              (Command{.kind = Kind::check, .options = {Option::tryHiding}, .jsonFile = "a.json"}));
    EXPECT_TRUE(SelfCheck::parse({"--self-check", "--all"}).options.contains(Option::tryHiding));
    EXPECT_EQ(SelfCheck::parse({"--self-check", "--only", "menu bar"}),
              (Command{.kind = Kind::check, .only = "menu bar"}));
    EXPECT_NE(SelfCheck::usage().find(" ports, permission, menu bar, "), std::string::npos);
    EXPECT_EQ(SelfCheck::parse({"--self-check", "--hide"}), (Command{.kind = Kind::hide}));
    EXPECT_EQ(SelfCheck::parse({"--self-check", "--dump", "412"}), (Command{.kind = Kind::dump, .pid = 412}));
    for (const auto* pid : {"", "x", "4x", "-4", "0", "99999999999"}) {
        EXPECT_EQ(SelfCheck::parse({"--self-check", "--dump", pid}), usage) << pid;
    }
    for (const std::vector<std::string>& rest :
         std::vector<std::vector<std::string>>{{"--dump"},
                                               {"--json"},
                                               {"--pictures"},
                                               {"--pictures", ""},
                                               {"--al"},
                                               {"--json", "a", "--json", "b"},
                                               {"--hide", "--all"}}) {
        std::vector<std::string> arguments{"--self-check"};
        arguments.insert(arguments.end(), rest.begin(), rest.end());
        EXPECT_EQ(SelfCheck::parse(arguments), usage) << rest.front();
    }
}

}  // namespace
}  // namespace velko
