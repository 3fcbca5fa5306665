#pragma once

#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoCore/NonCopyable.h"

namespace velko {

/// Lets one program at a time work in a folder: an advisory lock on a small file there, which the system
/// releases when the process ends, however it ends. Programs on other Macs are kept out if the file system
/// shares locks between machines. One thread.
class FolderLock final : private NonCopyable {
 public:
    /// Why a folder was not locked.
    struct Refusal {
        bool isTaken = false;     ///< another program has it; otherwise it can't be locked at all
        std::string description;  ///< what that program tells of itself, maybe nothing; or what is wrong
    };

    explicit FolderLock(std::filesystem::path folder, FileCalls calls = {});
    ~FolderLock() { release(); }

    /// Locks the folder, unless this object has done so already. A folder that is missing is made.
    [[nodiscard]] std::expected<void, Refusal> take();

    /// Writes a line that other programs read when they find the folder locked. Call it only while the lock
    /// is held.
    void tell(std::string_view line);

    void release() noexcept;

    [[nodiscard]] const std::filesystem::path& folder() const noexcept { return folder_; }

 private:
    std::filesystem::path folder_;
    FileCalls calls_;
    std::optional<Descriptor> file_;  ///< open for as long as the lock is held
};

}  // namespace velko
