#pragma once

#include <cstddef>
#include <expected>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

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
};

/// Files that are read and replaced as a whole. Blocks until done; any thread.
namespace AtomicFile {

inline constexpr std::size_t largest = 16U << 20U;  ///< bytes that `read` accepts

/// The content of a file; nothing when there is none; an error when it cannot be read or is too large.
[[nodiscard]] std::expected<std::optional<std::string>, FileError> read(const std::filesystem::path& path,
                                                                        const FileCalls& calls = {});

/// Replaces a file, or what a symbolic link at its place points to, and makes missing folders. Only the
/// user may read the result. At every moment, also after a crash, either the old or the new content is
/// there whole. On an error it is the old one, unless only the last step failed, the flush of the folder.
[[nodiscard]] std::expected<void, FileError> replace(const std::filesystem::path& path,
                                                     std::string_view content, const FileCalls& calls = {});

}  // namespace AtomicFile

}  // namespace velko
