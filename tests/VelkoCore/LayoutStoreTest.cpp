#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "VelkoCore/Layout/LayoutStore.h"
#include "tests/TemporaryFolder.h"

namespace velko {
namespace {

class LayoutStoreTest : public testing::Test {
 protected:
    const TemporaryFolder folder_;
    const LayoutStore store_ = LayoutStore{LayoutStore::defaultURL(folder_.path() / "Application Support")};
};

TEST_F(LayoutStoreTest, FindsNothingThenWhatWasSavedLast) {
    EXPECT_EQ(store_.url(), folder_.path() / "Application Support" / "Velko" / "layout.json");
    EXPECT_EQ(store_.load(), std::nullopt);
    writeFile(folder_.path() / "Application Support", "in the way");
    EXPECT_EQ(store_.save({}).error().description,
              store_.url().string() + ": cannot be looked up: Not a directory");
    std::filesystem::remove(folder_.path() / "Application Support");
    Layout layout{.sections = {{"com.example.app", Section::buried}}};
    ASSERT_TRUE(store_.save(layout));
    EXPECT_EQ(store_.load(), layout);
    layout.inbox = {"com.example.new"};
    ASSERT_TRUE(store_.save(layout));
    EXPECT_EQ(store_.load(), layout);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator{store_.url().parent_path()}, {}), 1);
}

TEST_F(LayoutStoreTest, ReportsAnUnreadableFileAndLeavesItAlone) {
    ASSERT_TRUE(store_.save({}));
    const std::vector<std::pair<std::string, std::string>> cases{
        {"", "not valid JSON at line 1, column 1"},
        {R"({"sections": {"a": "gone"}})",
         R"(sections.a: expected "bar", "tucked" or "buried", found "gone")"},
        {std::string(AtomicFile::largest, '['), "nested more than 64 levels deep"},
        {std::string(AtomicFile::largest + 1, ' '), "cannot be read: it is larger than 16 MiB"},
    };
    for (const auto& [content, problem] : cases) {
        writeFile(store_.url(), content);
        const auto loaded = store_.load();
        ASSERT_FALSE(loaded) << problem;
        EXPECT_EQ(loaded.error().description, store_.url().string() + ": " + problem);
        EXPECT_TRUE(contentOf(store_.url()) == content) << problem;
    }
}

}  // namespace
}  // namespace velko
