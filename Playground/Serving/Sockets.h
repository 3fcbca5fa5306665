#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <utility>

namespace velko::web {

/// A port of the loopback address, on which this program listens until the object goes. A client that
/// connects waits until somebody accepts it. Any thread.
class ListeningPort final {
 public:
    /// Takes that port, or any free one. On failure, one line that says why.
    [[nodiscard]] static std::expected<ListeningPort, std::string> take(std::optional<std::uint16_t> wanted);

    ListeningPort(ListeningPort&& other) noexcept;
    ListeningPort& operator=(ListeningPort&&) = delete;
    ListeningPort(const ListeningPort&) = delete;
    ListeningPort& operator=(const ListeningPort&) = delete;
    ~ListeningPort();

    [[nodiscard]] std::uint16_t number() const noexcept { return number_; }
    /// Gives the socket to the caller, who closes it.
    [[nodiscard]] int release() && noexcept { return std::exchange(socket_, -1); }

 private:
    ListeningPort(int socket, std::uint16_t number) : socket_(socket), number_(number) {}

    int socket_;  ///< -1 after a move
    std::uint16_t number_;
};

/// One line that says why a port could not be taken. `error` is the system's error number.
[[nodiscard]] std::string whyNoPort(std::optional<std::uint16_t> wanted, int error);

}  // namespace velko::web
