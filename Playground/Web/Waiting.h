#pragma once

#include <chrono>
#include <cstddef>
#include <vector>

namespace velko::web {

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
