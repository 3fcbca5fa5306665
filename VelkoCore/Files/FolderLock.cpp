#include "VelkoCore/Files/FolderLock.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <system_error>
#include <utility>

namespace velko {

namespace {

/// The first line of a file, as far as it fits and can be shown.
std::string firstLine(const Descriptor& file, const FileCalls& calls) {
    std::array<char, 512> buffer{};
    const auto count = uninterrupted([&] { return calls.read(file.number(), buffer.data(), buffer.size()); });
    const auto length = static_cast<std::size_t>(std::max<std::ptrdiff_t>(count, 0));
    std::string line;
    for (const char byte : std::string_view(buffer.data(), length)) {
        if (byte < ' ' || byte > '~') {
            break;
        }
        line += byte;
    }
    return line;
}

}  // namespace

FolderLock::FolderLock(std::filesystem::path folder, FileCalls calls)
    : folder_(std::move(folder)), calls_(std::move(calls)) {}

std::expected<void, FolderLock::Refusal> FolderLock::take() {
    if (file_) {
        return {};
    }
    if (const auto made = AtomicFile::makeFolder(folder_, calls_); !made) {
        return std::unexpected(Refusal{.description = made.error().description});
    }
    constexpr unsigned userOnly = 0600;
    constexpr int flags = O_RDWR | O_CREAT | O_APPEND | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    const auto file = folder_ / ".velko-lock";
    file_.emplace(calls_, file, flags, userOnly);
    if (file_->isOpen() &&
        uninterrupted([&] { return calls_.flock(file_->number(), LOCK_EX | LOCK_NB); }) == 0) {
        calls_.ftruncate(file_->number(), 0);  // the line of an earlier holder
        return {};
    }
    const int error = errno;
    const bool isTaken = file_->isOpen() && error == EWOULDBLOCK;
    const std::string description =
        isTaken ? firstLine(*file_, calls_) : file.string() + ": " + std::generic_category().message(error);
    file_.reset();
    return std::unexpected(Refusal{.isTaken = isTaken, .description = description});
}

void FolderLock::tell(std::string_view line) {
    if (file_) {
        calls_.ftruncate(file_->number(), 0);
        calls_.write(file_->number(), line.data(), line.size());
    }
}

void FolderLock::release() noexcept {
    file_.reset();
}

}  // namespace velko
