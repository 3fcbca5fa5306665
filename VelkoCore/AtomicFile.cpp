#include "VelkoCore/AtomicFile.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

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

/// Makes a call again for as long as signals interrupt it.
template <class Call>
auto uninterrupted(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR) {
        result = call();
    }
    return result;
}

/// An open file, closed at the latest when it goes out of scope.
class Descriptor final {
 public:
    Descriptor(const FileCalls& calls, const path& file, int flags, unsigned mode = 0)
        : calls_(calls), number_(uninterrupted([&] { return calls.open(file.c_str(), flags, mode); })) {}

    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    ~Descriptor() { static_cast<void>(close()); }

    [[nodiscard]] bool isOpen() const { return number_ != -1; }
    [[nodiscard]] int number() const { return number_; }

    /// Closes once. An interrupted close has closed the file all the same.
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

/// The file that a path means once symbolic links at its end are followed.
std::expected<path, FileError> followLinks(const path& file, const FileCalls& calls) {
    constexpr int mostLinks = 32;
    path current = file;
    for (int link = 0; link < mostLinks; ++link) {
        std::array<char, 4096> target{};
        const auto length = calls.readlink(current.c_str(), target.data(), target.size());
        if (length == -1) {
            if (errno == EINVAL || errno == ENOENT) {
                return current;
            }
            return systemFailure(file, "cannot be looked up");
        }
        current = current.parent_path() / path{std::string(target.data(), static_cast<std::size_t>(length))};
    }
    return failure(file, "cannot be looked up", "too many symbolic links");
}

Done makeFolders(const path& folder, const FileCalls& calls) {
    constexpr unsigned userOnly = 0700;
    if (calls.mkdir(folder.c_str(), userOnly) == 0 || errno == EEXIST) {
        return {};
    }
    if (errno == ENOENT && folder.has_relative_path() && folder != folder.parent_path()) {
        if (Done made = makeFolders(folder.parent_path(), calls); !made) {
            return made;
        }
        if (calls.mkdir(folder.c_str(), userOnly) == 0 || errno == EEXIST) {
            return {};
        }
    }
    return systemFailure(folder, "the folder cannot be made");
}

Done writeAll(const path& file, Descriptor& descriptor, std::string_view content, const FileCalls& calls) {
    while (!content.empty()) {
        const auto written =
            uninterrupted([&] { return calls.write(descriptor.number(), content.data(), content.size()); });
        if (written == -1) {
            return systemFailure(file, "cannot be written");
        }
        if (written == 0) {
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

/// Writes the content beside `file`, under a name of this process's own, and moves it into place.
Done writeAndRename(const path& file, std::string_view content, const FileCalls& calls) {
    constexpr int mostLeftovers = 100;
    constexpr unsigned userOnly = 0600;
    for (int attempt = 0; attempt < mostLeftovers; ++attempt) {
        const path temporary = file.parent_path() /
                               (".velko-save-" + std::to_string(::getpid()) + "-" + std::to_string(attempt));
        Descriptor descriptor{calls, temporary, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, userOnly};
        if (!descriptor.isOpen() && errno == EEXIST) {
            continue;  // left by an earlier process of the same number, which was killed
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
    Descriptor descriptor{calls, folder, O_RDONLY | O_DIRECTORY | O_CLOEXEC};
    // Some file systems, such as those of network homes, have no flush for folders.
    const auto flushed = [&] {
        return uninterrupted([&] { return calls.fsync(descriptor.number()); }) == 0 || errno == EINVAL ||
               errno == ENOTSUP;
    };
    if (!descriptor.isOpen() || !flushed() || !descriptor.close()) {
        return systemFailure(folder, "the folder cannot be flushed to disk");
    }
    return {};
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
      readlink(::readlink) {}

std::expected<std::optional<std::string>, FileError> AtomicFile::read(const path& file,
                                                                      const FileCalls& calls) {
    // O_NONBLOCK: a pipe in the file's place must not hold up the caller for ever.
    const Descriptor descriptor{calls, file, O_RDONLY | O_NONBLOCK | O_CLOEXEC};
    if (!descriptor.isOpen()) {
        if (errno == ENOENT) {
            return std::nullopt;
        }
        return systemFailure(file, "cannot be opened");
    }
    constexpr std::size_t step = 1U << 16U;
    std::string content;
    while (content.size() <= largest) {
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
    return failure(file, "cannot be read", "it is larger than " + std::to_string(largest >> 20U) + " MiB");
}

std::expected<void, FileError> AtomicFile::replace(const path& file, std::string_view content,
                                                   const FileCalls& calls) {
    const auto target = followLinks(file, calls);
    if (!target) {
        return std::unexpected(target.error());
    }
    const path folder = target->has_parent_path() ? target->parent_path() : path{"."};
    if (Done made = makeFolders(folder, calls); !made) {
        return made;
    }
    if (Done written = writeAndRename(*target, content, calls); !written) {
        return written;
    }
    return flushFolder(folder, calls);
}

}  // namespace velko
