#include <algorithm>
#include <cerrno>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "VelkoCore/Files/AtomicFile.h"
#include "tests/TemporaryFolder.h"

namespace velko {
namespace {

namespace fs = std::filesystem;

/// Called before each system call with its name; a number other than 0 makes the call fail with it.
using Interception = std::function<int(const std::string& call)>;

FileCalls intercepted(const Interception& intercept) {
    const auto wrap = [&](const std::string& name, auto& member) {
        member = [=, real = member](auto... arguments) {
            using Result = decltype(real(arguments...));
            if (const int error = intercept(name); error != 0) {
                errno = error;
                return Result{-1};
            }
            return real(arguments...);
        };
    };
    FileCalls calls;
    // Pieces of ten bytes, so that a file can be caught half-written.
    calls.write = [write = calls.write](int file, const void* data, std::size_t size) {
        return write(file, data, std::min<std::size_t>(size, 10));
    };
    wrap("open", calls.open);
    wrap("read", calls.read);
    wrap("write", calls.write);
    wrap("fsync", calls.fsync);
    wrap("close", calls.close);
    wrap("rename", calls.rename);
    wrap("unlink", calls.unlink);
    wrap("mkdir", calls.mkdir);
    wrap("readlink", calls.readlink);
    wrap("lstat", calls.lstat);
    return calls;
}

std::ptrdiff_t filesIn(const fs::path& folder) {
    return std::distance(fs::directory_iterator{folder}, {});
}

class AtomicFileTest : public testing::Test {
 protected:
    const std::string old_ = std::string(95, 'o');
    const std::string new_ = std::string(87, 'n');
    const TemporaryFolder folder_;
    const fs::path file_ = folder_.path() / "layout.json";
};

TEST_F(AtomicFileTest, KeepsTheOldContentWhenAnyCallFails) {
    const auto isNew = [](const std::string& made) { return made.find("rename open") != std::string::npos; };
    std::string calls;
    bool hasFailed = true;
    for (std::size_t failing = 0; hasFailed; ++failing) {
        writeFile(file_, old_);
        calls.clear();
        hasFailed = false;
        std::size_t call = 0;
        const auto intercept = [&](const std::string& name) {
            calls += name + " ";
            // The files that a process leaves when it dies at this call.
            EXPECT_EQ(contentOf(file_), isNew(calls) ? new_ : old_) << calls;
            const bool fails = call++ == failing;
            hasFailed = hasFailed || fails;
            return fails ? ENOSPC : 0;
        };
        const auto result = AtomicFile::replace(file_, new_, intercepted(intercept));
        EXPECT_EQ(result.has_value(), !hasFailed) << calls;
        if (hasFailed) {
            EXPECT_TRUE(result.error().description.starts_with(folder_.path().string())) << calls;
            EXPECT_TRUE(result.error().description.ends_with(": No space left on device")) << calls;
        }
        // Once the rename has worked, the new content stands.
        EXPECT_EQ(contentOf(file_), isNew(calls) ? new_ : old_) << calls;
        EXPECT_EQ(filesIn(folder_.path()), 1) << calls;
    }
    // What a crash of the whole machine leaves depends on the flushes and on their order.
    EXPECT_TRUE(calls.ends_with("write fsync close rename open fsync close ")) << calls;
}

TEST_F(AtomicFileTest, GoesOnAfterInterruptionsAndLeftovers) {
    const auto leftover = [&](int process, int number) {
        return folder_.path() / (".velko-save-" + std::to_string(process) + "-" + std::to_string(number));
    };
    constexpr int gone = 1 << 30;
    for (int number = 0; number < 100; ++number) {
        writeFile(leftover(getpid(), number), old_);
        writeFile(leftover(gone, number), old_);
    }
    writeFile(leftover(getppid(), 0), old_);
    writeFile(folder_.path() / ".velko-save-", old_);
    std::string before;
    const auto calls = intercepted([&](const std::string& name) {
        const bool isSlow = name == "open" || name == "read" || name == "write" || name == "fsync";
        const bool isFirst = std::exchange(before, name) != name;
        return isSlow && isFirst ? EINTR : 0;
    });
    EXPECT_TRUE(AtomicFile::replace(file_, new_, calls));
    EXPECT_EQ(AtomicFile::read(file_, calls), new_);
    EXPECT_EQ(filesIn(folder_.path()), 103) << "those of living processes stay, and what has another name";
}

TEST_F(AtomicFileTest, AsksTheSystemThreeTimesToTakeData) {
    for (const auto& [refusals, isWritten] : {std::pair(2, true), {3, false}}) {
        FileCalls calls;
        calls.write = [left = refusals, write = calls.write](int file, const void* data,
                                                             std::size_t size) mutable -> std::ptrdiff_t {
            return left-- > 0 ? 0 : write(file, data, size);
        };
        EXPECT_EQ(AtomicFile::replace(file_, new_, calls).has_value(), isWritten);
        EXPECT_EQ(filesIn(folder_.path()), 1);
    }
}

TEST_F(AtomicFileTest, SavesWhereFoldersCannotBeFlushed) {
    for (const int error : {EINVAL, ENOTSUP, EOPNOTSUPP, ENOSYS, EIO}) {
        int flushes = 0;
        const auto calls = intercepted(
            [&](const std::string& name) { return name == "fsync" && ++flushes == 2 ? error : 0; });
        EXPECT_EQ(AtomicFile::replace(file_, new_, calls).has_value(), error != EIO) << error;
        EXPECT_EQ(flushes, 2);
    }
}

TEST_F(AtomicFileTest, FollowsNoLinkOfAnotherUser) {
    const fs::path other = folder_.path() / "other";
    writeFile(other, old_);
    fs::create_symlink("other", file_);
    FileCalls calls;
    calls.lstat = [lstat = calls.lstat](const char* file, struct stat* found) {
        const int result = lstat(file, found);
        found->st_uid += S_ISLNK(found->st_mode) ? 1 : 0;
        return result;
    };
    const std::string reason = file_.string() + ": cannot be looked up: a link there belongs to another user";
    EXPECT_EQ(AtomicFile::replace(file_, new_, calls), std::unexpected(FileError{reason}));
    EXPECT_EQ(AtomicFile::readOwn(file_, calls), std::unexpected(FileError{reason}));
    EXPECT_EQ(AtomicFile::readOwn(file_), old_) << "one of our own";
    EXPECT_EQ(AtomicFile::readOwn(other, calls), old_);
    EXPECT_EQ(AtomicFile::read(file_, calls), old_) << "which the user has chosen";
}

TEST_F(AtomicFileTest, MakesFoldersAndFilesForTheUserOnly) {
    const fs::path deep = folder_.path() / "a" / "b" / "layout.json";
    ASSERT_TRUE(AtomicFile::replace(deep, new_));
    EXPECT_EQ(contentOf(deep), new_);
    EXPECT_EQ(fs::status(deep).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(fs::status(deep.parent_path()).permissions(), fs::perms::owner_all);
    fs::permissions(deep, fs::perms::others_read, fs::perm_options::add);
    ASSERT_TRUE(AtomicFile::replace(deep, ""));
    EXPECT_EQ(AtomicFile::read(deep), "");
    EXPECT_EQ(fs::status(deep).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(AtomicFileTest, ReplacesWhatALinkPointsTo) {
    const fs::path dotfiles = folder_.path() / "dotfiles";
    fs::create_directory_symlink("dotfiles", folder_.path() / "linked");
    fs::create_symlink("linked/layout.json", file_);
    for (const std::string& content : {new_, old_}) {  // the link leads nowhere first, then to a file
        ASSERT_TRUE(fs::create_directories(dotfiles) || content == old_);
        ASSERT_TRUE(AtomicFile::replace(file_, content));
        EXPECT_TRUE(fs::is_symlink(file_));
        EXPECT_EQ(contentOf(dotfiles / "layout.json"), content);
    }
    fs::create_symlink("loop", folder_.path() / "loop");
    const auto result = AtomicFile::replace(folder_.path() / "loop", new_);
    ASSERT_FALSE(result);
    EXPECT_TRUE(result.error().description.ends_with("too many symbolic links"))
        << result.error().description;
}

TEST_F(AtomicFileTest, TellsMissingFromUnreadable) {
    EXPECT_EQ(AtomicFile::read(file_), std::nullopt);
    EXPECT_EQ(AtomicFile::read(folder_.path()).error().description,
              folder_.path().string() + ": cannot be read: it is a folder");
    writeFile(file_, std::string(AtomicFile::largest, ' '));
    EXPECT_EQ(AtomicFile::read(file_)->value_or("").size(), AtomicFile::largest);
    EXPECT_EQ(AtomicFile::read(file_ / "below").error().description,
              (file_ / "below").string() + ": cannot be opened: Not a directory");
    EXPECT_FALSE(AtomicFile::replace(file_ / "below", new_));
    EXPECT_FALSE(AtomicFile::replace(folder_.path(), new_));
}

}  // namespace
}  // namespace velko
