#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include "VelkoCore/NonCopyable.h"
#include "VelkoCore/Time/Date.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// The thread on which all of Velko's state lives, with its clocks and timers.
///
/// All functions are called on that thread unless they say otherwise. Work runs one piece at a time, in order
/// of its due time and then of its scheduling; never inside the call that schedules it.
class MainThread : private NonCopyable {
 public:
    using Work = std::function<void()>;
    using Uptime = velko::Uptime;

    virtual ~MainThread() = default;

    /// Whether the caller runs on this thread. From any thread.
    [[nodiscard]] virtual bool isCurrent() const noexcept = 0;

    [[nodiscard]] virtual Uptime now() const = 0;

    /// The wall clock, which people and time servers may set.
    [[nodiscard]] virtual PreciseDate date() const = 0;

    /// Runs `work` soon. From any thread; what it captures is let go on the main thread.
    virtual void post(Work work) = 0;

    /// Runs `work` once, after `delay` of uptime.
    [[nodiscard]] virtual Task after(Uptime delay, Work work) = 0;

    /// Runs `work` every `period` of uptime, for the first time after one period, until cancelled.
    [[nodiscard]] virtual Task every(Uptime period, Work work) = 0;

    /// Runs `read` off the main thread and hands its result to `then` on the main thread. `read` captures
    /// values only. Cancelling before the answer means that `then` is never called, though `read` may
    /// have begun.
    template <class Read, class Then>
    [[nodiscard]] Task background(Read read, Then then) {
        using Result = std::invoke_result_t<Read&>;
        return startBackground(
            [read = std::move(read)]() mutable -> std::shared_ptr<void> {
                return std::make_shared<Result>(read());
            },
            [then = std::move(then)](const std::shared_ptr<void>& result) mutable {
                then(std::move(*std::static_pointer_cast<Result>(result)));
            });
    }

 protected:
    using Read = std::function<std::shared_ptr<void>()>;
    using Then = std::function<void(const std::shared_ptr<void>&)>;

    /// `background`, without the type of the result.
    [[nodiscard]] virtual Task startBackground(Read read, Then then) = 0;
};

/// Uptime as a number of seconds, for texts and for calls of the system.
[[nodiscard]] constexpr double secondsOf(MainThread::Uptime uptime) noexcept {
    return std::chrono::duration<double>(uptime).count();
}

/// The system delays the timers of a program that nobody looks at. This asks it not to, for a while. Main
/// thread.
class Activity : private NonCopyable {
 public:
    virtual ~Activity() = default;

    /// While the subscription lasts, timers come when they are due. People can read the `reason`. Several may
    /// last at a time. The machine may still go to sleep.
    [[nodiscard]] virtual Subscription begin(const std::string& reason) = 0;
};

}  // namespace velko
