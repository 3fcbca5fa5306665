#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "VelkoCore/Files/FolderLock.h"

namespace velko::playground {

/// The folder that is kept between runs, by the desktop's convention for an app's data; nothing where the
/// environment names no folder of the user's.
[[nodiscard]] std::optional<std::filesystem::path> homeFolder();

/// Makes a folder to keep things in, where it is missing. Whether that can be done: it has to be the user's
/// own. If not, says why on standard error.
[[nodiscard]] bool prepareFolder(const std::filesystem::path& folder);

/// Makes this program the only one that changes what is in the lock's folder. Otherwise says on standard
/// error who is.
[[nodiscard]] bool claim(FolderLock& lock);

/// What a program that has a folder tells others: its process, and where it can be reached, if anywhere.
void tellHolder(FolderLock& lock, const std::string& address);

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
