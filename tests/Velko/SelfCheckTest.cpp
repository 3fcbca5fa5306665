#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "Simulator/Files/LibplistReader.h"
#include "Simulator/Machine/SimulatedMac.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "Velko/Checks/SelfCheck.h"
#include "VelkoEngine/Ports/Platform.h"
#include "tests/TemporaryFolder.h"

namespace velko {
namespace {

using SelfCheck::Command;

class SelfCheckTest : public testing::Test {
 protected:
    SelfCheckTest() {
        mac.launch({.bundleID = "com.example.mail", .name = "Mail", .icons = {{.title = "3"}}});
    }

    std::vector<std::string> failures() {
        checks = SelfCheck::run({.platform = mac.platform(),
                                 .propertyLists = reader,
                                 .layoutFile = folder.path() / "not" / "there" / "yet" / "layout.json",
                                 .logFile = logFile,
                                 .pass = [this](MainThread::Uptime duration) { mac.advance(duration); }});
        std::vector<std::string> names;
        for (const auto& check : checks) {
            if (!check.passed) {
                names.push_back(check.name);
            }
        }
        EXPECT_EQ(SelfCheck::passed(checks), names.empty());
        return names;
    }

    using Names = std::vector<std::string>;
    SimulatedMac mac;
    LibplistReader reader;
    TemporaryFolder folder;
    std::filesystem::path logFile = folder.path() / "Velko.log";
    Contracts::Checks checks;
};

TEST_F(SelfCheckTest, FindsAMacInOrderAndChangesNothing) {
    const auto iconsBefore = mac.visibleIcons();
    EXPECT_EQ(failures(), Names{});
    EXPECT_EQ(mac.visibleIcons(), iconsBefore);
    EXPECT_EQ(mac.cost().engineCalls, 0U);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
    const std::string report = SelfCheck::report(checks);
    EXPECT_NE(report.find("OK   the menu bar's items are read: "), std::string::npos) << report;
    EXPECT_EQ(report.find("are read: 0 items"), std::string::npos) << report;
    EXPECT_NE(report.find(std::to_string(checks.size()) + " passed, 0 failed\n"), std::string::npos);
    mac.revokeTrust();
    EXPECT_EQ(failures(), Names{});
    EXPECT_NE(SelfCheck::report(checks).find("can be asked about: not given"), std::string::npos);
}

TEST_F(SelfCheckTest, SaysWhatIsMissing) {
    mac.framework.installed = false;
    mac.setDisplays({});
    logFile = "/proc/nobody/Velko.log";
    const Names names = failures();
    const auto has = [&](const std::string& name) { return std::ranges::count(names, name) == 1; };
    EXPECT_TRUE(has("hiding: framework loads (dlopen)"));
    EXPECT_TRUE(has("screens are listed"));
    EXPECT_TRUE(has("the log's folder is writable") || ::access("/proc", W_OK) == 0);
    EXPECT_NE(SelfCheck::report(checks).find("FAIL screens are listed\n"), std::string::npos);
    EXPECT_NE(SelfCheck::report(checks).find(std::to_string(names.size()) + " failed\n"), std::string::npos);
}

TEST(SelfCheckCommand, IsReadFromTheCommandLine) {
    using Kind = Command::Kind;
    const Command usage{.kind = Kind::usage};
    EXPECT_EQ(SelfCheck::parse({}), Command{});
    EXPECT_EQ(SelfCheck::parse({"-NSDocumentRevisionsDebugMode", "YES"}), Command{});
    EXPECT_EQ(SelfCheck::parse({"--self-check"}), (Command{.kind = Kind::check}));
    EXPECT_EQ(SelfCheck::parse({"--self-check", "--dump", "412"}), (Command{.kind = Kind::dump, .pid = 412}));
    for (const auto* pid : {"", "x", "4x", "-4", "0", "99999999999"}) {
        EXPECT_EQ(SelfCheck::parse({"--self-check", "--dump", pid}), usage) << pid;
    }
    EXPECT_EQ(SelfCheck::parse({"--self-check", "--dump"}), usage);
    EXPECT_EQ(SelfCheck::parse({"--self-check", "--all"}), usage);
}

}  // namespace
}  // namespace velko
