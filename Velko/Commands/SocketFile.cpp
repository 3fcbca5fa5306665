#include "Velko/Commands/SocketFile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <system_error>
#include <unistd.h>

#include "VelkoCore/Files/AtomicFile.h"

namespace velko::commands {

namespace {

constexpr int backlog = 64;
constexpr mode_t folderMode = 0700;
constexpr mode_t socketMode = 0600;

std::string because(const std::filesystem::path& file) {
    return file.string() + ": " + std::generic_category().message(errno) + ".";
}

/// The address of a socket's file; nothing if the path is too long for one.
std::optional<sockaddr_un> addressOf(const std::filesystem::path& file) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string& path = file.native();
    if (path.empty() || path.size() >= sizeof address.sun_path) {
        return std::nullopt;
    }
    std::memcpy(static_cast<char*>(address.sun_path), path.c_str(), path.size() + 1);
    return address;
}

std::string tooLong(const std::filesystem::path& file) {
    return file.string() + ": the path is too long for a socket.";
}

bool setUp(int socket) {
    return ::fcntl(socket, F_SETFD, FD_CLOEXEC) == 0 && ::fcntl(socket, F_SETFL, O_NONBLOCK) == 0;
}

/// Makes the folder, and keeps everybody else out of it.
std::expected<void, std::string> secure(const std::filesystem::path& folder) {
    if (const auto made = AtomicFile::makeFolder(folder); !made) {
        return std::unexpected(made.error().description);
    }
    struct stat found{};
    if (::lstat(folder.c_str(), &found) != 0) {
        return std::unexpected(because(folder));
    }
    if (!S_ISDIR(found.st_mode) || found.st_uid != ::geteuid()) {
        return std::unexpected(folder.string() + " is no folder of yours.");
    }
    if ((found.st_mode & 07777U) != folderMode && ::chmod(folder.c_str(), folderMode) != 0) {
        return std::unexpected(because(folder));
    }
    return {};
}

/// Removes a socket that nobody answers.
std::expected<void, std::string> clear(const std::filesystem::path& file) {
    struct stat found{};
    if (::lstat(file.c_str(), &found) != 0) {
        return errno == ENOENT ? std::expected<void, std::string>() : std::unexpected(because(file));
    }
    if (!S_ISSOCK(found.st_mode)) {
        return std::unexpected(file.string() + " is in the way: it is no socket.");
    }
    if (const Connection other = connectTo(file); other.socket.isOpen() || !other.problem.empty()) {
        return std::unexpected(other.problem.empty() ? "Another Velko answers at " + file.string() + "."
                                                     : other.problem);
    }
    return ::unlink(file.c_str()) == 0 || errno == ENOENT ? std::expected<void, std::string>()
                                                          : std::unexpected(because(file));
}

}  // namespace

Socket& Socket::operator=(Socket&& other) noexcept {
    const int number = std::exchange(other.number_, -1);
    close();
    number_ = number;
    return *this;
}

void Socket::close() noexcept {
    if (isOpen()) {
        ::close(std::exchange(number_, -1));
    }
}

std::expected<ListeningFile, std::string> ListeningFile::make(const std::filesystem::path& file) {
    auto address = addressOf(file);
    if (!address) {
        return std::unexpected(tooLong(file));
    }
    if (const auto safe = secure(file.parent_path()); !safe) {
        return std::unexpected(safe.error());
    }
    if (const auto free = clear(file); !free) {
        return std::unexpected(free.error());
    }
    Socket socket(::socket(AF_UNIX, SOCK_STREAM, 0));
    struct stat made{};
    // Nobody else can enter the folder, so nobody connects before the mode is set.
    const bool listens =
        socket.isOpen() && setUp(socket.number()) &&
        ::bind(socket.number(), reinterpret_cast<sockaddr*>(&*address), sizeof *address) == 0 &&
        ::chmod(file.c_str(), socketMode) == 0 && ::listen(socket.number(), backlog) == 0 &&
        ::lstat(file.c_str(), &made) == 0;
    if (!listens) {
        return std::unexpected(because(file));
    }
    ListeningFile listening(std::move(socket), file);
    listening.identity_ = {made.st_dev, made.st_ino};
    return listening;
}

ListeningFile::~ListeningFile() {
    struct stat found{};
    if (socket_.isOpen() && ::lstat(file_.c_str(), &found) == 0 &&
        identity_ == std::pair(found.st_dev, found.st_ino)) {
        ::unlink(file_.c_str());
    }
}

std::optional<Socket> ListeningFile::accept() const {
    Socket client(uninterrupted([&] { return ::accept(socket_.number(), nullptr, nullptr); }));
    return client.isOpen() && setUp(client.number()) ? std::optional(std::move(client)) : std::nullopt;
}

Connection connectTo(const std::filesystem::path& file) {
    auto address = addressOf(file);
    struct stat found{};
    if (!address) {
        return {.problem = tooLong(file)};
    }
    if (::lstat(file.c_str(), &found) != 0) {
        return {.problem = errno == ENOENT || errno == ENOTDIR ? "" : because(file)};
    }
    if (!S_ISSOCK(found.st_mode) || found.st_uid != ::geteuid()) {
        return {.problem = file.string() + " is no socket of yours."};
    }
    Socket socket(::socket(AF_UNIX, SOCK_STREAM, 0));
    // It may block only if very many wait already; then that is an error at once.
    if (!socket.isOpen() || !setUp(socket.number())) {
        return {.problem = because(file)};
    }
    const int connected = uninterrupted(
        [&] { return ::connect(socket.number(), reinterpret_cast<sockaddr*>(&*address), sizeof *address); });
    if (connected != 0) {
        return {.problem = errno == ECONNREFUSED || errno == ENOENT ? "" : because(file)};
    }
    if (peerUser(socket) != ::geteuid()) {
        return {.problem = "Somebody else answers at " + file.string() + "."};
    }
    return {.socket = std::move(socket)};
}

}  // namespace velko::commands
