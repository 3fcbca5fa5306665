#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <system_error>

#include "VelkoCore/NonCopyable.h"

namespace velko {

/// A folder of the test's own, removed with everything in it.
class TemporaryFolder final : private NonCopyable {
 public:
    TemporaryFolder() {
        std::string pattern = testing::TempDir() + "velko-test-XXXXXX";
        path_ = mkdtemp(pattern.data());
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

 private:
    std::filesystem::path path_;
};

inline std::string contentOf(const std::filesystem::path& file) {
    std::ostringstream content;
    content << std::ifstream{file, std::ios::binary}.rdbuf();
    return content.str();
}

inline void writeFile(const std::filesystem::path& file, const std::string& content) {
    std::ofstream{file, std::ios::binary} << content;
}

}  // namespace velko
