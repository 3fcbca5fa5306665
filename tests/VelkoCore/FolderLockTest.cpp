#include <cerrno>
#include <gtest/gtest.h>
#include <optional>

#include "VelkoCore/Files/FolderLock.h"
#include "tests/TemporaryFolder.h"

namespace velko {
namespace {

TEST(FolderLock, KeepsOthersOutAndTellsThemWhoHasIt) {
    const TemporaryFolder temporary;
    const auto folder = temporary.path() / "missing" / "Velko";
    std::optional<FolderLock> first(std::in_place, folder);
    FolderLock second(folder);
    ASSERT_TRUE(first->take());
    EXPECT_TRUE(first->take()) << "it has it already";
    EXPECT_FALSE(second.take().has_value());
    first->tell("process 1");
    first->tell("process 1, http://127.0.0.1\nmore");
    const auto refused = second.take();
    ASSERT_FALSE(refused);
    EXPECT_TRUE(refused.error().isTaken);
    EXPECT_EQ(refused.error().description, "process 1, http://127.0.0.1");
    first.reset();
    EXPECT_TRUE(second.take());
    EXPECT_EQ(FolderLock(folder).take().error().description, "") << "the second has told nothing yet";
    second.release();
    EXPECT_TRUE(FolderLock(folder).take());
}

TEST(FolderLock, SaysWhyAFolderCannotBeLocked) {
    const TemporaryFolder folder;
    FileCalls calls;
    calls.flock = [](int, int) {
        errno = ENOTSUP;
        return -1;
    };
    const auto refused = FolderLock(folder.path(), calls).take();
    ASSERT_FALSE(refused);
    EXPECT_FALSE(refused.error().isTaken);
    EXPECT_EQ(refused.error().description,
              (folder.path() / ".velko-lock").string() + ": Operation not supported");
    writeFile(folder.path() / "file", "in the way");
    EXPECT_FALSE(FolderLock(folder.path() / "file").take().error().isTaken);
}

}  // namespace
}  // namespace velko
