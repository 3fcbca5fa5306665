#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "VelkoCore/NonCopyable.h"

namespace velko::commands {

/// Serves a socket on a thread of its own. Each client sends one line and gets lines until somebody hangs up.
/// There are limits for the number of clients, for the length of their line, for the time that they take to
/// send it and to read what they get, and for how much they leave unread. Only the user's own programs get
/// in. Any thread.
class SocketServer final : private NonCopyable {
 public:
    /// A client, for as long as it is there. A number is never used twice.
    using Client = std::uint64_t;

    /// Called on the server's thread.
    struct Handlers {
        std::function<void(Client, const std::string& line)> asked;
        std::function<void(Client)> left;  ///< one that had asked, before somebody hung up on it
    };

    static constexpr std::size_t mostClients = 16;
    static constexpr std::size_t mostUnread = 1U << 20U;       ///< bytes that may wait for one client
    static constexpr auto patience = std::chrono::seconds(5);  ///< with a client that has to read or to send

    /// Makes the socket. The process has to ignore SIGPIPE. On failure one sentence says why.
    [[nodiscard]] static std::expected<std::unique_ptr<SocketServer>, std::string> open(
        const std::filesystem::path& file);
    /// Stops, and removes the socket.
    ~SocketServer();

    /// Begins to serve. Once.
    void start(Handlers handlers);
    /// Waits until no handler runs; from then on none is called. Not from within one.
    void stop();

    /// Sends lines to a client. Nothing happens if it is gone.
    void send(Client client, std::string_view lines);
    /// Closes the connection when the client has what was sent.
    void hangUp(Client client);

 private:
    class Parts;
    explicit SocketServer(std::unique_ptr<Parts> parts);

    std::unique_ptr<Parts> parts_;
};

}  // namespace velko::commands
