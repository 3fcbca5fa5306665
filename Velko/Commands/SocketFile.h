#pragma once

#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <sys/types.h>
#include <utility>

/// Sockets that are files: only their user can reach them.
namespace velko::commands {

/// A socket of this process, closed at the latest when it goes out of scope. Any thread.
class Socket final {
 public:
    explicit Socket(int number = -1) noexcept : number_(number) {}
    Socket(Socket&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Socket& operator=(Socket&& other) noexcept;
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;
    ~Socket() { close(); }

    [[nodiscard]] bool isOpen() const noexcept { return number_ != -1; }
    [[nodiscard]] int number() const noexcept { return number_; }
    void close() noexcept;

 private:
    int number_;
};

/// The user at the other end of a connected socket; nothing if the system does not say.
[[nodiscard]] std::optional<uid_t> peerUser(const Socket& socket);

/// A socket in a folder, on which this program listens until the object goes. The folder belongs to the user
/// alone.
class ListeningFile final {
 public:
    /// Makes the folder and the socket. A socket that nobody answers any more is replaced. It is an error if
    /// another program answers there, or if something else is there: one sentence says what. The caller sees
    /// to it that no other program does this at the same time.
    [[nodiscard]] static std::expected<ListeningFile, std::string> make(const std::filesystem::path& file);

    ListeningFile(ListeningFile&& other) noexcept = default;
    ListeningFile& operator=(ListeningFile&&) = delete;
    ListeningFile(const ListeningFile&) = delete;
    ListeningFile& operator=(const ListeningFile&) = delete;
    /// Removes the file, unless another one has taken its place.
    ~ListeningFile();

    [[nodiscard]] const Socket& socket() const noexcept { return socket_; }

    /// The next client that waits, if one waits. It does not block, nor do reads and writes of that socket.
    [[nodiscard]] std::optional<Socket> accept() const;

 private:
    ListeningFile(Socket socket, std::filesystem::path file)
        : socket_(std::move(socket)), file_(std::move(file)) {}

    Socket socket_;
    std::filesystem::path file_;
    std::pair<dev_t, ino_t> identity_{};  ///< of the file
};

/// Connects to such a socket, if it belongs to the user. On failure one sentence says why; nothing at all
/// means that nobody listens.
struct Connection {
    Socket socket{};
    std::string problem{};  ///< empty: connected, or nobody listens
};
[[nodiscard]] Connection connectTo(const std::filesystem::path& file);

}  // namespace velko::commands
