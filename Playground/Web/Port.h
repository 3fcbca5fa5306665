#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <utility>

namespace velko::web {

/// A port of the loopback address on which this program listens, given up when it goes out of scope. Whoever
/// connects waits until somebody accepts. Any thread.
class ListeningPort final {
 public:
    /// Takes that port, or any free one; or one line that says why it could not.
    [[nodiscard]] static std::expected<ListeningPort, std::string> take(std::optional<std::uint16_t> wanted);

    ListeningPort(ListeningPort&& other) noexcept;
    ListeningPort& operator=(ListeningPort&&) = delete;
    ListeningPort(const ListeningPort&) = delete;
    ListeningPort& operator=(const ListeningPort&) = delete;
    ~ListeningPort();

    [[nodiscard]] std::uint16_t number() const noexcept { return number_; }
    /// Hands its socket over, to whoever closes it.
    [[nodiscard]] int release() && noexcept { return std::exchange(socket_, -1); }

 private:
    ListeningPort(int socket, std::uint16_t number) : socket_(socket), number_(number) {}

    int socket_;  ///< -1 once moved from
    std::uint16_t number_;
};

/// The line for a port that could not be taken, by the system's error number.
[[nodiscard]] std::string whyNoPort(std::optional<std::uint16_t> wanted, int error);

}  // namespace velko::web
