#include "VelkoCore/Files/AtomicFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace velko {

namespace {

using std::filesystem::path;

using Done = std::expected<void, FileError>;

std::unexpected<FileError> failure(const path& file, std::string_view attempt, std::string_view reason) {
    return std::unexpected(
        FileError{file.string() + ": " + std::string{attempt} + ": " + std::string{reason}});
}

/// A failure of the system call that was made last.
std::unexpected<FileError> systemFailure(const path& file, std::string_view attempt) {
    return failure(file, attempt, std::generic_category().message(errno));
}

Done writeAll(const path& file, Descriptor& descriptor, std::string_view content, const FileCalls& calls) {
    constexpr int mostRefusals = 3;
    for (int refusals = 0; !content.empty();) {
        const auto written =
            uninterrupted([&] { return calls.write(descriptor.number(), content.data(), content.size()); });
        if (written == -1) {
            return systemFailure(file, "cannot be written");
        }
        refusals = written == 0 ? refusals + 1 : 0;
        if (refusals == mostRefusals) {
            return failure(file, "cannot be written", "the system takes no more data");
        }
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    if (uninterrupted([&] { return calls.fsync(descriptor.number()); }) == -1) {
        return systemFailure(file, "cannot be flushed to disk");
    }
    if (!descriptor.close()) {
        return systemFailure(file, "cannot be closed");
    }
    return {};
}

/// What the names of temporary files begin with; the number of the process that writes follows.
constexpr std::string_view temporaryMark = ".velko-save-";

/// The process that a temporary file is named after.
std::optional<int> writerOf(std::string_view name) {
    if (!name.starts_with(temporaryMark)) {
        return std::nullopt;
    }
    name.remove_prefix(temporaryMark.size());
    int process = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), process);
    const bool isNumber = error == std::errc() && end != name.data() + name.size() && *end == '-';
    return isNumber && process > 0 ? std::optional(process) : std::nullopt;
}

/// Removes the temporary files of processes that have ended. When that fails, saving goes on.
void sweep(const path& folder, const FileCalls& calls) {
    std::error_code error;
    for (auto entry = std::filesystem::directory_iterator(folder, error);
         !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const auto writer = writerOf(entry->path().filename().native());
        if (writer && calls.kill(*writer, 0) == -1 && errno == ESRCH) {
            calls.unlink(entry->path().c_str());
        }
    }
}

/// Writes the content beside `file`, under a name of this process's own, and moves it into place.
Done writeAndRename(const path& file, std::string_view content, const FileCalls& calls) {
    constexpr int mostLeftovers = 10'000;  // left by processes with the same number that died
    constexpr unsigned userOnly = 0600;
    const std::string mark = std::string(temporaryMark) + std::to_string(::getpid()) + "-";
    for (int attempt = 0; attempt < mostLeftovers; ++attempt) {
        const path temporary = file.parent_path() / (mark + std::to_string(attempt));
        Descriptor descriptor{calls, temporary, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, userOnly};
        if (!descriptor.isOpen() && errno == EEXIST) {
            continue;
        }
        if (!descriptor.isOpen()) {
            return systemFailure(file, "its temporary file cannot be made");
        }
        Done done = writeAll(file, descriptor, content, calls);
        if (done && calls.rename(temporary.c_str(), file.c_str()) == -1) {
            done = systemFailure(file, "cannot be replaced");
        }
        if (!done) {
            calls.unlink(temporary.c_str());
        }
        return done;
    }
    return failure(file, "its temporary file cannot be made", "too many are left over");
}

Done flushFolder(const path& folder, const FileCalls& calls) {
    // The errors of file systems that cannot flush folders, such as those of network homes.
    constexpr std::array unable{EINVAL, ENOTSUP, EOPNOTSUPP, ENOSYS};
    Descriptor descriptor{calls, folder, O_RDONLY | O_DIRECTORY | O_CLOEXEC};
    const auto flushed = [&] {
        return uninterrupted([&] { return calls.fsync(descriptor.number()); }) == 0 ||
               std::ranges::find(unable, errno) != unable.end();
    };
    if (!descriptor.isOpen() || !flushed() || !descriptor.close()) {
        return systemFailure(folder, "the folder cannot be flushed to disk");
    }
    return {};
}

/// What to know about a file before it is read; a reason not to read it.
using Check = std::function<std::optional<std::string>(const struct stat& found)>;

std::expected<std::optional<std::string>, FileError> readAll(const path& file, int flags,
                                                             const FileCalls& calls,
                                                             std::size_t most = AtomicFile::largest,
                                                             const Check& check = {}) {
    // O_NONBLOCK: a pipe in the file's place must not hold up the caller for ever.
    const Descriptor descriptor{calls, file, O_RDONLY | O_NONBLOCK | O_CLOEXEC | flags};
    if (!descriptor.isOpen()) {
        if (errno == ENOENT) {
            return std::nullopt;
        }
        return errno == ELOOP && flags == O_NOFOLLOW ? failure(file, "cannot be opened", "it is a link")
                                                     : systemFailure(file, "cannot be opened");
    }
    if (check) {
        struct stat found{};
        if (calls.fstat(descriptor.number(), &found) == -1) {
            return systemFailure(file, "cannot be looked up");
        }
        if (const auto why = check(found)) {
            return failure(file, "is not read", *why);
        }
    }
    constexpr std::size_t step = 1U << 16U;
    std::string content;
    while (content.size() <= most) {
        const std::size_t size = content.size();
        content.resize(size + step);
        const auto count =
            uninterrupted([&] { return calls.read(descriptor.number(), content.data() + size, step); });
        if (count == -1) {
            return errno == EISDIR ? failure(file, "cannot be read", "it is a folder")
                                   : systemFailure(file, "cannot be read");
        }
        content.resize(size + static_cast<std::size_t>(count));
        if (count == 0) {
            return content;
        }
    }
    return failure(file, "cannot be read", "it is larger than " + std::to_string(most >> 20U) + " MiB");
}

}  // namespace

FileCalls::FileCalls()
    : open([](const char* file, int flags, unsigned mode) { return ::open(file, flags, mode); }),
      read(::read),
      write(::write),
      fsync(::fsync),
      close(::close),
      rename(::rename),
      unlink(::unlink),
      mkdir([](const char* folder, unsigned mode) { return ::mkdir(folder, static_cast<mode_t>(mode)); }),
      readlink(::readlink),
      lstat([](const char* file, struct stat* found) { return ::lstat(file, found); }),
      fstat([](int file, struct stat* found) { return ::fstat(file, found); }),
      flock(::flock),
      ftruncate([](int file, long long size) { return ::ftruncate(file, static_cast<off_t>(size)); }),
      kill(::kill) {}

std::expected<path, FileError> AtomicFile::followOwnLinks(const path& file, const FileCalls& calls) {
    constexpr int mostLinks = 32;
    constexpr auto attempt = "cannot be looked up";
    path current = file;
    for (int link = 0; link < mostLinks; ++link) {
        struct stat found{};
        if (calls.lstat(current.c_str(), &found) == -1) {
            return errno == ENOENT ? std::expected<path, FileError>(current) : systemFailure(file, attempt);
        }
        if ((found.st_mode & S_IFMT) != S_IFLNK) {
            return current;
        }
        if (found.st_uid != ::geteuid()) {
            return failure(file, attempt, "a link there belongs to another user");
        }
        std::array<char, 4096> target{};
        const auto length = calls.readlink(current.c_str(), target.data(), target.size());
        if (length == -1) {
            return systemFailure(file, attempt);
        }
        current = current.parent_path() / path{std::string(target.data(), static_cast<std::size_t>(length))};
    }
    return failure(file, attempt, "too many symbolic links");
}

std::expected<void, FileError> AtomicFile::makeFolder(const path& folder, const FileCalls& calls) {
    constexpr unsigned userOnly = 0700;
    if (calls.mkdir(folder.c_str(), userOnly) == 0 || errno == EEXIST) {
        return {};
    }
    if (errno == ENOENT && folder.has_relative_path() && folder != folder.parent_path()) {
        if (Done made = makeFolder(folder.parent_path(), calls); !made) {
            return made;
        }
        if (calls.mkdir(folder.c_str(), userOnly) == 0 || errno == EEXIST) {
            return {};
        }
    }
    return systemFailure(folder, "the folder cannot be made");
}

std::expected<std::optional<std::string>, FileError> AtomicFile::read(const path& file,
                                                                      const FileCalls& calls) {
    return readAll(file, 0, calls);
}

std::expected<std::optional<std::string>, FileError> AtomicFile::readOwn(const path& file,
                                                                         const FileCalls& calls) {
    const auto target = followOwnLinks(file, calls);
    if (!target) {
        return std::unexpected(target.error());
    }
    // There was no link a moment ago. If somebody has put one there since, opening the file fails.
    return readAll(file, *target == file ? O_NOFOLLOW : 0, calls);
}

std::expected<std::optional<std::string>, FileError> AtomicFile::readOf(unsigned owner, const path& file,
                                                                        std::size_t most,
                                                                        const FileCalls& calls) {
    const Check check = [owner](const struct stat& found) -> std::optional<std::string> {
        if ((found.st_mode & S_IFMT) != S_IFREG) {
            return (found.st_mode & S_IFMT) == S_IFDIR ? "it is a folder" : "it is no file";
        }
        if (found.st_uid != owner) {
            return owner == 0 ? "it does not belong to root" : "it belongs to another user";
        }
        if ((found.st_mode & (S_IWGRP | S_IWOTH)) != 0) {
            return "other users may write to it";
        }
        return std::nullopt;
    };
    return readAll(file, O_NOFOLLOW, calls, most, check);
}

std::expected<void, FileError> AtomicFile::replace(const path& file, std::string_view content,
                                                   const FileCalls& calls) {
    const auto target = followOwnLinks(file, calls);
    if (!target) {
        return std::unexpected(target.error());
    }
    const path folder = target->has_parent_path() ? target->parent_path() : path{"."};
    if (Done made = makeFolder(folder, calls); !made) {
        return made;
    }
    sweep(folder, calls);
    if (Done written = writeAndRename(*target, content, calls); !written) {
        return written;
    }
    return flushFolder(folder, calls);
}

}  // namespace velko
