#pragma once

#include <expected>
#include <filesystem>
#include <optional>
#include <string>

#include "VelkoCore/Files/FolderLock.h"

namespace velko::playground {

/// The folder that is kept between runs. It follows the desktop's convention for the data of an app. Nothing
/// if the environment does not name the user's home folder.
[[nodiscard]] std::optional<std::filesystem::path> homeFolder();

/// Makes the folder if it is missing. Returns whether it can be used: it must belong to the user. If not,
/// standard error says why.
[[nodiscard]] bool prepareFolder(const std::filesystem::path& folder);

/// Makes this program the only one that may change files in the lock's folder. Returns false if another
/// program has the folder; standard error then says which.
[[nodiscard]] bool claim(FolderLock& lock);

/// Tells other programs who has the folder: the number of this process, and its address if it has one.
void tellHolder(FolderLock& lock, const std::string& address);

/// The content of a file that the user names; if it cannot be read, one line that says why.
[[nodiscard]] std::expected<std::string, std::string> readFile(const std::filesystem::path& file);

/// A temporary folder. It is deleted with everything in it when the object goes.
class ScratchFolder final {
 public:
    /// Nothing if no folder can be made.
    [[nodiscard]] static std::optional<ScratchFolder> create();

    ScratchFolder(ScratchFolder&& other) noexcept;
    ScratchFolder& operator=(ScratchFolder&&) = delete;
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder();

    [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }

 private:
    explicit ScratchFolder(std::filesystem::path path) : path_(std::move(path)) {}

    std::filesystem::path path_;  ///< empty after a move
};

}  // namespace velko::playground
