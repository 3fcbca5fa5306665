#pragma once

#include <cerrno>
#include <cstddef>
#include <expected>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "VelkoCore/NonCopyable.h"

struct stat;

namespace velko {

/// Why a file could not be read or replaced: its path, what was tried and the system's reason.
struct FileError {
    std::string description;

    bool operator==(const FileError&) const = default;
};

/// The system calls that files need, as POSIX defines them: -1 and `errno` for a failure. A default-made
/// table is the real system's; tests replace members, and so may a platform with a better flush.
struct FileCalls {
    FileCalls();

    std::function<int(const char* path, int flags, unsigned mode)> open;
    std::function<std::ptrdiff_t(int file, void* data, std::size_t size)> read;
    std::function<std::ptrdiff_t(int file, const void* data, std::size_t size)> write;
    std::function<int(int file)> fsync;
    std::function<int(int file)> close;
    std::function<int(const char* from, const char* to)> rename;
    std::function<int(const char* path)> unlink;
    std::function<int(const char* path, unsigned mode)> mkdir;
    std::function<std::ptrdiff_t(const char* path, char* target, std::size_t size)> readlink;
    std::function<int(const char* path, struct stat* found)> lstat;
    std::function<int(int file, struct stat* found)> fstat;
    std::function<int(int file, int operation)> flock;
    std::function<int(int file, long long size)> ftruncate;
    std::function<int(int process, int signal)> kill;
};

/// Files that are read and replaced as a whole. Blocks until done; any thread.
namespace AtomicFile {

inline constexpr std::size_t largest = 16U << 20U;  ///< bytes that `read` accepts

/// The content of a file; nothing when there is none; an error when it cannot be read or is too large.
[[nodiscard]] std::expected<std::optional<std::string>, FileError> read(const std::filesystem::path& path,
                                                                        const FileCalls& calls = {});

/// As `read`, for a file of the user's own: a link in its place that belongs to somebody else is an error.
[[nodiscard]] std::expected<std::optional<std::string>, FileError> readOwn(const std::filesystem::path& path,
                                                                           const FileCalls& calls = {});

/// As `read`, for a file that only a certain user may have written: a file of at most `most` bytes that
/// belongs to `owner` and that nobody else may write to. Anything else in its place is an error, a link too.
[[nodiscard]] std::expected<std::optional<std::string>, FileError> readOf(unsigned owner,
                                                                          const std::filesystem::path& path,
                                                                          std::size_t most,
                                                                          const FileCalls& calls = {});

/// Replaces a file, or what a symbolic link of the user's in its place points to, and makes missing folders.
/// Only the user may read the result. At every moment, also after a crash, either the old or the new content
/// is there whole. On an error it is the old one, unless only the last step failed, the flush of the folder.
/// What earlier processes left in the folder, because they died while they saved, is removed.
[[nodiscard]] std::expected<void, FileError> replace(const std::filesystem::path& path,
                                                     std::string_view content, const FileCalls& calls = {});

/// Makes a folder for the user alone, and those above that are missing.
[[nodiscard]] std::expected<void, FileError> makeFolder(const std::filesystem::path& folder,
                                                        const FileCalls& calls = {});

/// The file to which a path leads when symbolic links in its last place are followed. The file need not
/// exist. A link that belongs to another user is an error: that user could choose what is read or
/// overwritten.
[[nodiscard]] std::expected<std::filesystem::path, FileError> followOwnLinks(
    const std::filesystem::path& path, const FileCalls& calls = {});

}  // namespace AtomicFile

/// Makes a call again for as long as signals interrupt it.
template <class Call>
auto uninterrupted(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR) {
        result = call();
    }
    return result;
}

/// An open file, closed at the latest when it goes out of scope. The calls outlive it.
class Descriptor final : private NonCopyable {
 public:
    Descriptor(const FileCalls& calls, const std::filesystem::path& file, int flags, unsigned mode = 0)
        : calls_(calls), number_(uninterrupted([&] { return calls.open(file.c_str(), flags, mode); })) {}

    ~Descriptor() { static_cast<void>(close()); }

    [[nodiscard]] bool isOpen() const { return number_ != -1; }
    [[nodiscard]] int number() const { return number_; }

    /// Closes the file once. A close that a signal interrupts has closed it too.
    [[nodiscard]] bool close() {
        if (!isOpen()) {
            return true;
        }
        const int result = calls_.close(std::exchange(number_, -1));
        return result == 0 || errno == EINTR;
    }

 private:
    const FileCalls& calls_;
    int number_;
};

}  // namespace velko
