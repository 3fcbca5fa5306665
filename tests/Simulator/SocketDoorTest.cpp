#include <algorithm>
#include <atomic>
#include <cerrno>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <thread>
#include <vector>

#include "Simulator/Time/HostMainThread.h"
#include "Velko/Commands/CommandClient.h"
#include "Velko/Commands/Messages.h"
#include "Velko/Commands/SocketDoor.h"
#include "Velko/Commands/SocketFile.h"
#include "tests/TemporaryFolder.h"

namespace velko {
namespace {

using namespace std::chrono_literals;
using commands::Answer;
using commands::answerLines;

constexpr auto longEnough = 20s;  // far more than any run takes

/// A main thread with a door. Callers come on threads of their own, as other programs do.
class SocketDoorTest : public testing::Test {
 protected:
    void open() {
        ASSERT_TRUE(door.open({.asked =
                                   [this](CommandDoor::Caller caller, const std::string& line) {
                                       EXPECT_TRUE(main.isCurrent());
                                       asked(caller, line);
                                   },
                               .left = [this](CommandDoor::Caller) { ++left; }}));
    }

    /// What `velko` prints and how it ends: "out|error|status".
    std::string call(const std::vector<std::string>& words) {
        std::optional<std::string> result;
        std::atomic<bool> isDone = false;
        std::thread caller([&] {
            std::string out;
            std::string error;
            const auto into = [](std::string& text) {
                return [&text](std::string_view more) {
                    text += more;
                    return true;
                };
            };
            const int status = commands::runCommandLine(words, {.socket = file,
                                                                .folder = "/here/there",
                                                                .version = "1.2",
                                                                .out = into(out),
                                                                .error = into(error)});
            result = out + "|" + error + "|" + std::to_string(status);
            isDone = true;
            main.post([] {});  // so that it looks
        });
        EXPECT_TRUE(main.runUntil([&] { return isDone.load(); }, longEnough));
        caller.join();
        return result.value_or("");
    }

    void answer(CommandDoor::Caller caller, const std::string& text, int status) {
        door.send(caller, answerLines({.kind = Answer::Kind::out, .text = text}));
        door.send(caller, answerLines({.status = status}));
        door.hangUp(caller);
    }

    TemporaryFolder folder;
    std::filesystem::path file = folder.path() / "Velko" / commands::socketName;
    HostMainThread main;
    SocketDoor door{main, file};
    std::function<void(CommandDoor::Caller, const std::string&)> asked =
        [this](CommandDoor::Caller caller, const std::string& line) { answer(caller, line + "\n", 0); };
    int left = 0;
};

TEST_F(SocketDoorTest, BringsCallersToTheMainThread) {
    EXPECT_EQ(call({"status"}), "|velko: Velko does not run.\n|1");
    open();
    EXPECT_EQ(call({"status", "--json"}), "{\"version\":1,\"words\":[\"status\",\"--json\",\"--\"]}\n||0");
    EXPECT_TRUE(call({"layout", "export", "../a"}).contains("\"/here/a\""));
    EXPECT_TRUE(call({"layout", "export", "/a"}).contains("\"/a\""));
    EXPECT_EQ(call({"dance"}), "|velko: There is no command “dance”. Try: velko help\n|2");
    EXPECT_EQ(call({"version"}), "velko 1.2\n||0") << "nobody is asked";
    struct stat found{};
    ASSERT_EQ(::lstat(file.c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 07777U, 0600U);
    door.close();
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_EQ(call({"status"}), "|velko: Velko does not run.\n|1");
}

TEST_F(SocketDoorTest, CarriesLongAnswersAndMakesThemSafe) {
    const std::string text(300'000, 'a');
    asked = [&](CommandDoor::Caller caller, const std::string&) { answer(caller, text, 1); };
    open();
    EXPECT_EQ(call({"list"}), text + "||1");
    asked = [&](CommandDoor::Caller caller, const std::string&) {
        answer(caller, "a\tb\x1b[2J\xc2\x9b\n", 0);
    };
    EXPECT_EQ(call({"list"}), "a\tb\uFFFD[2J\uFFFD\n||0");
    asked = [&](CommandDoor::Caller caller, const std::string&) {
        door.send(caller, "{\"out\":\n");
        door.hangUp(caller);
    };
    EXPECT_EQ(call({"list"}), "|velko: Velko gave an answer that can't be read.\n|1");
    asked = [&](CommandDoor::Caller, const std::string&) { door.close(); };
    EXPECT_TRUE(call({"list"}).contains("hung up"));
}

TEST_F(SocketDoorTest, HearsWhenACallerLeaves) {
    std::optional<CommandDoor::Caller> waiting;
    asked = [&](CommandDoor::Caller caller, const std::string&) { waiting = caller; };
    open();
    {
        const auto connection = commands::connectTo(file);
        const std::string line = commands::requestLine({"log", "-f"});
        ASSERT_EQ(::send(connection.socket.number(), line.data(), line.size(), 0),
                  static_cast<ssize_t>(line.size()));
        EXPECT_TRUE(main.runUntil([&] { return waiting.has_value(); }, longEnough));
    }
    EXPECT_TRUE(main.runUntil([&] { return left == 1; }, longEnough));
    answer(*waiting, "too late", 0);
}

TEST_F(SocketDoorTest, ReplacesOnlyASocketThatNobodyAnswers) {
    open();
    SocketDoor second(main, file);
    const auto refused = second.open({});
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error(), "Another Velko answers at " + file.string() + ".");
    EXPECT_TRUE(call({"status"}).ends_with("|0")) << "the first one goes on";
    door.close();
    {
        // As a crash leaves it: the file stays, and nobody listens.
        const auto crashed = commands::ListeningFile::make(file);
        ASSERT_TRUE(crashed);
        std::filesystem::create_hard_link(file, folder.path() / "kept");
    }
    std::filesystem::rename(folder.path() / "kept", file);
    EXPECT_EQ(call({"status"}), "|velko: Velko does not run.\n|1");
    open();
    EXPECT_TRUE(call({"status"}).ends_with("|0"));
    std::filesystem::remove(file);
    writeFile(file, "mine");
    door.close();
    EXPECT_EQ(contentOf(file), "mine") << "what has taken its place stays";
    EXPECT_FALSE(door.open({}));
    EXPECT_EQ(contentOf(file), "mine");
    EXPECT_TRUE(call({"status"}).contains("is no socket of yours"));
}

TEST_F(SocketDoorTest, SaysWhyThereIsNoSocket) {
    SocketDoor deep(main, folder.path() / std::string(200, 'a') / "b");
    EXPECT_TRUE(deep.open({}).error().ends_with("the path is too long for a socket."));
    writeFile(folder.path() / "file", "");
    EXPECT_FALSE(SocketDoor(main, folder.path() / "file" / "b").open({}));
    std::filesystem::create_directory_symlink(folder.path(), folder.path() / "link");
    EXPECT_TRUE(
        SocketDoor(main, folder.path() / "link" / "b").open({}).error().contains("no folder of yours"));
}

}  // namespace
}  // namespace velko
