#pragma once

#include <chrono>
#include <cstddef>
#include <vector>

#include "VelkoCore/NonCopyable.h"

// What a thread needs that serves many sockets.

namespace velko {

/// Ends the wait of another thread for sockets. It is a pipe, which becomes readable with the first `ring`.
class Wakeup final : private NonCopyable {
 public:
    Wakeup();
    ~Wakeup();

    /// Whether the system gave us a pipe.
    [[nodiscard]] bool works() const noexcept { return reader_ != -1; }
    [[nodiscard]] int reader() const noexcept { return reader_; }

    /// Any thread. It never waits.
    void ring() const noexcept;
    /// Forgets all rings so far.
    void clear() const noexcept;

 private:
    int reader_ = -1;
    int writer_ = -1;
};

/// The connections that have no answer yet. Every user of this machine can open some and then send nothing,
/// or one byte at a time. So each has a limited time, and if there are too many, the oldest is closed. A
/// browser sends its request at once and has its answer long before it is the oldest.
class Waiting final {
 public:
    using Time = std::chrono::steady_clock::time_point;

    static constexpr std::size_t most = 64;
    static constexpr auto patience =
        std::chrono::seconds(5);  ///< from the start of a connection to the last byte of its request

    void enter(int socket, Time now) { guests_.push_back({socket, now}); }
    /// The connection is closed, or gets a stream and may stay.
    void leave(int socket);
    /// The connections to close, oldest first. They stay in the list until `leave`.
    [[nodiscard]] std::vector<int> overdue(Time now) const;

 private:
    struct Guest {
        int socket;
        Time since;
    };
    std::vector<Guest> guests_;  ///< oldest first
};

}  // namespace velko
