#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Desktop/SimulatedHotKeys.h"
#include "Simulator/Desktop/SimulatedPointer.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/Files/LibplistReader.h"
#include "Simulator/ForwardingPorts.h"
#include "Simulator/Machine/SimulatedMac.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "Velko/Checks/SelfCheck.h"
#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoCore/Files/Json.h"
#include "VelkoEngine/Hiding/VKAssessment.h"
#include "VelkoEngine/Ports/Platform.h"
#include "tests/TemporaryFolder.h"

namespace velko {
namespace {

using namespace std::chrono_literals;
using SelfCheck::Command;
using SelfCheck::Option;

/// A framework that can forget to hide, or to stop hiding.
class StubbornFramework final : public ForwardingFramework {
 public:
    using ForwardingFramework::ForwardingFramework;

    bool hidesNothing = false;
    bool neverEnds = false;

    [[nodiscard]] std::expected<ObjectRef, RaisedException> makeConfiguration(
        const std::string& className, const std::vector<int>& systemItems,
        const std::vector<BundleID>& bundleIDs) override {
        const std::vector<BundleID> everybody{"app.velko.mac", "com.example.mail", "com.example.chat"};
        return ForwardingFramework::makeConfiguration(className, systemItems,
                                                      hidesNothing ? everybody : bundleIDs);
    }
    [[nodiscard]] std::expected<void, RaisedException> invalidate(const ObjectRef& assertion) override {
        kept_.push_back(assertion);
        return neverEnds ? std::expected<void, RaisedException>()
                         : ForwardingFramework::invalidate(assertion);
    }

 private:
    std::vector<ObjectRef> kept_;
};

/// The second process: what it holds ends with it, unless the system forgets to end it.
class SimulatedBench final : public SelfCheck::Bench {
 public:
    explicit SimulatedBench(SimulatedMac& mac) : mac_(mac) {}

    bool starts = true;
    bool outlivesItself = false;

    [[nodiscard]] bool startHider() override {
        if (starts) {
            isAlive_ = true;
            VKAssessment::activate(mac_.platform(), {1}, {"app.velko.mac"},
                                   [this](VKAssessment::Activation activation) {
                                       if (isAlive_) {
                                           assertion_ = std::move(activation.assertion);
                                       }
                                   });
        }
        return starts;
    }
    void killHider() override {
        isAlive_ = false;
        if (!outlivesItself) {
            assertion_ = nullptr;
        }
    }

 private:
    SimulatedMac& mac_;
    bool isAlive_ = false;
    PrivateFramework::ObjectRef assertion_;
};

class SelfCheckTest : public testing::Test {
 protected:
    using Lines = std::vector<std::string>;

    SelfCheckTest() {
        mac.launch({.bundleID = "com.example.mail", .name = "Mail", .icons = {{.title = "3"}}});
        chat = mac.launch({.bundleID = "com.example.chat", .name = "Chat", .icons = {{}, {}}});
        mac.advance(1s);
    }

    /// Runs the check, and returns the lines that say FAIL.
    Lines failures(const std::set<Option>& options = {}) {
        lines.clear();
        const Platform real = mac.platform();
        const int status =
            SelfCheck::run({.platform = {.mainThread = real.mainThread,
                                         .accessibility = real.accessibility,
                                         .workspace = real.workspace,
                                         .displays = real.displays,
                                         .pointer = real.pointer,
                                         .processes = real.processes,
                                         .windows = real.windows,
                                         .privateFramework = framework,
                                         .activity = real.activity},
                            .propertyLists = reader,
                            .hotKeys = mac.hotKeys,
                            .info = {.version = "1.2"},
                            .layoutFile = folder.path() / "not" / "there" / "yet" / "layout.json",
                            .logFile = logFile,
                            .pass = [this](MainThread::Uptime duration) { mac.advance(duration); },
                            .bench = &bench},
                           {.kind = Command::Kind::check, .options = options, .jsonFile = jsonFile},
                           [this](const std::string& line) { lines.push_back(line); });
        Lines failed;
        std::ranges::copy_if(lines, std::back_inserter(failed),
                             [](const std::string& line) { return line.starts_with("FAIL "); });
        EXPECT_EQ(status, failed.empty() ? 0 : 1);
        return failed;
    }
    Lines failuresOfHiding() { return failures({Option::tryHiding}); }

    [[nodiscard]] bool says(const std::string& words) const {
        return std::ranges::any_of(lines,
                                   [&](const std::string& line) { return line.find(words) != line.npos; });
    }
    [[nodiscard]] std::string all() const {
        std::string text;
        for (const std::string& line : lines) {
            text += line + "\n";
        }
        return text;
    }
    void expectEverythingShows() {
        EXPECT_EQ(mac.visibleIcons().size(), 4U);
        EXPECT_EQ(mac.framework.activeAssertions(), 0U);
    }

    SimulatedMac mac;
    StubbornFramework framework{mac.framework};
    SimulatedBench bench{mac};
    LibplistReader reader;
    TemporaryFolder folder;
    std::filesystem::path logFile = folder.path() / "Velko.log";
    std::filesystem::path jsonFile;
    ProcessID chat = 0;
    Lines lines;
};

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
                lines.back().find("left out: hiding (--try-hiding)") != std::string::npos)
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
    failures();
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

TEST_F(SelfCheckTest, ComparesTheFrameworksTypesWithOurCalls) {
    for (auto& [name, methods] : mac.framework.classes) {
        for (RuntimeMethod& method : methods) {
            if (method.selector == "invalidate") {
                method.typeEncoding = "v24@0:8@16";
            }
        }
    }
    EXPECT_EQ(failures(), Lines{"FAIL types of -[MBAssessmentModeAssertion invalidate]: v24@0:8@16"});
}

TEST_F(SelfCheckTest, HidesForAMomentAndPutsEverythingBack) {
    std::size_t fewest = 99;
    mac.onMenuBarChange = [&] { fewest = std::min(fewest, mac.visibleIcons().size()); };
    EXPECT_EQ(failuresOfHiding(), Lines{}) << all();
    mac.onMenuBarChange = nullptr;
    EXPECT_EQ(fewest, 1U);
    EXPECT_TRUE(says("OK   icons of other apps are hidden: 2 of 2")) << all();
    EXPECT_TRUE(says("OK   everything is back after a process that hid them was killed"));
    EXPECT_FALSE(says("left out: hiding"));
    expectEverythingShows();

    mac.revokeTrust();
    EXPECT_EQ(failuresOfHiding(), Lines{}) << all();
    EXPECT_TRUE(says("TOLD the menu bar while icons are hidden: not seen"));
    expectEverythingShows();
}

TEST_F(SelfCheckTest, TellsHowTheSystemDeclinesToHide) {
    mac.framework.refusal = FrameworkError{.domain = "MBError", .code = 7, .description = "no"};
    EXPECT_EQ(failuresOfHiding(), (Lines{"FAIL the system accepts the wish to hide: MBError 7: no",
                                         "FAIL a second process hides icons"}));
    mac.framework.refusal.reset();
    mac.framework.answerDelay = 30s;
    EXPECT_EQ(failuresOfHiding().front(), "FAIL the system answers the wish to hide: no answer");
    mac.framework.answerDelay = SimulatedFramework::usualDelay;
    mac.advance(1min);
    expectEverythingShows();
    framework.hidesNothing = true;
    EXPECT_EQ(failuresOfHiding(), Lines{"FAIL icons of other apps are hidden: 0 of 2"});
    expectEverythingShows();
}

TEST_F(SelfCheckTest, NoticesIconsThatDoNotComeBack) {
    bench.outlivesItself = true;
    EXPECT_EQ(failuresOfHiding(),
              Lines{"FAIL everything is back after a process that hid them was killed: missing: "
                    "com.example.mail, com.example.chat"});
    bench.outlivesItself = false;
    bench.killHider();
    bench.starts = false;
    EXPECT_EQ(failuresOfHiding(), Lines{"FAIL a second process is started"});
    bench.starts = true;
    framework.neverEnds = true;
    EXPECT_EQ(failuresOfHiding().front(),
              "FAIL everything is back after the end of hiding: missing: "
              "com.example.mail, com.example.chat");
}

TEST_F(SelfCheckTest, LeavesTheHidingToAnotherVelko) {
    mac.launch({.bundleID = "app.velko.mac", .name = "Velko"});
    EXPECT_EQ(failuresOfHiding(), Lines{"FAIL no other Velko is running: quit Velko, and then try again"});
    EXPECT_EQ(mac.cost().engineCalls, 0U);
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
    EXPECT_EQ(SelfCheck::parse({"--self-check", "--hide"}), (Command{.kind = Kind::hide}));
    EXPECT_EQ(SelfCheck::parse({"--self-check", "--dump", "412"}), (Command{.kind = Kind::dump, .pid = 412}));
    for (const auto* pid : {"", "x", "4x", "-4", "0", "99999999999"}) {
        EXPECT_EQ(SelfCheck::parse({"--self-check", "--dump", pid}), usage) << pid;
    }
    for (const std::vector<std::string>& rest : std::vector<std::vector<std::string>>{
             {"--dump"}, {"--json"}, {"--al"}, {"--json", "a", "--json", "b"}, {"--hide", "--all"}}) {
        std::vector<std::string> arguments{"--self-check"};
        arguments.insert(arguments.end(), rest.begin(), rest.end());
        EXPECT_EQ(SelfCheck::parse(arguments), usage) << rest.front();
    }
}

}  // namespace
}  // namespace velko
