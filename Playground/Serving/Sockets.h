#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "VelkoCore/NonCopyable.h"

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

/// Ends another thread's wait for sockets: a pipe, which becomes readable with the first `ring`.
class Wakeup final : private NonCopyable {
 public:
    Wakeup();
    ~Wakeup();

    /// Whether the system had a pipe to give.
    [[nodiscard]] bool works() const noexcept { return reader_ != -1; }
    [[nodiscard]] int reader() const noexcept { return reader_; }

    /// Any thread, never waits.
    void ring() const noexcept;
    /// Forgets what was rung so far.
    void clear() const noexcept;

 private:
    int reader_ = -1;
    int writer_ = -1;
};

/// The connections that have not been answered yet. Everybody on this machine can open some and then say
/// nothing, or a byte at a time: so each has a limited time, and where there are too many the oldest goes.
/// Who asks at once, as a browser does, has had its answer long before it is the oldest.
class Waiting final {
 public:
    using Time = std::chrono::steady_clock::time_point;

    static constexpr std::size_t most = 64;
    static constexpr auto patience = std::chrono::seconds(5);  ///< from its coming to its last byte

    void enter(int socket, Time now) { guests_.push_back({socket, now}); }
    /// It has left, or gets a stream and may stay.
    void leave(int socket);
    /// Those to hang up on, oldest first. They stay until they have left.
    [[nodiscard]] std::vector<int> overdue(Time now) const;

 private:
    struct Guest {
        int socket;
        Time since;
    };
    std::vector<Guest> guests_;  ///< oldest first
};

}  // namespace velko::web
