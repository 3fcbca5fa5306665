#pragma once

#include <filesystem>
#include <optional>

namespace velko::playground {

/// A folder for the time of one show, removed with everything in it.
class ScratchFolder final {
 public:
    /// Nothing when no folder can be made.
    [[nodiscard]] static std::optional<ScratchFolder> create();

    ScratchFolder(ScratchFolder&& other) noexcept;
    ScratchFolder& operator=(ScratchFolder&&) = delete;
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder();

    [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }

 private:
    explicit ScratchFolder(std::filesystem::path path) : path_(std::move(path)) {}

    std::filesystem::path path_;  ///< empty once moved from
};

}  // namespace velko::playground
