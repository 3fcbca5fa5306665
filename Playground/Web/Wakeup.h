#pragma once

#include "VelkoCore/NonCopyable.h"
namespace velko::web {

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

}  // namespace velko::web
