#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <string>

#include "VelkoCore/NonCopyable.h"

namespace velko {

/// Where other programs of the user come to give Velko commands. Main thread.
class CommandDoor : private NonCopyable {
 public:
    /// One who has come in, until somebody hangs up. A number is never used twice.
    using Caller = std::uint64_t;

    struct Handlers {
        /// The caller's line, without a line feed. Nothing of it has been checked.
        std::function<void(Caller, const std::string& line)> asked;
        /// The caller has left before anybody has hung up.
        std::function<void(Caller)> left;
    };

    virtual ~CommandDoor() = default;

    /// Opens the door. Handlers are never called within this call. On failure one sentence says why.
    [[nodiscard]] virtual std::expected<void, std::string> open(Handlers handlers) = 0;
    /// Hangs up on everybody. No handler is called any more.
    virtual void close() = 0;

    /// Sends whole lines to a caller. Nothing happens if it has left.
    virtual void send(Caller caller, const std::string& lines) = 0;
    /// Lets the caller go when it has what was sent.
    virtual void hangUp(Caller caller) = 0;
};

}  // namespace velko
