#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "VelkoCore/NonCopyable.h"

namespace velko {

/// Scheduled work that its owner can call off. Move-only: destroying or replacing a task cancels it, so no
/// task runs after its owner is destroyed. Main thread only.
class Task {
 public:
    /// What a `MainThread` keeps for each piece of work.
    class Handle : private NonCopyable {
     public:
        virtual ~Handle() = default;

        /// The work never starts after this call, and what it captured is destroyed. Does nothing when the
        /// work has run.
        virtual void cancel() noexcept = 0;

        /// Whether the work may still run: neither done nor cancelled.
        [[nodiscard]] virtual bool isPending() const noexcept = 0;
    };

    Task() noexcept = default;
    explicit Task(std::shared_ptr<Handle> handle) noexcept : handle_(std::move(handle)) {}
    Task(Task&&) noexcept = default;
    Task& operator=(Task&& other) noexcept {
        // The new handle is stored before the old one is destroyed, because the old one's work may be running
        // right now.
        const Task old(std::exchange(handle_, std::exchange(other.handle_, nullptr)));
        return *this;
    }
    Task(const Task&) = delete;
    Task& operator=(const Task&) = delete;
    ~Task() { cancel(); }

    /// Calls the work off. Safe within the work itself.
    void cancel() noexcept {
        if (const auto handle = std::exchange(handle_, nullptr)) {
            handle->cancel();
        }
    }

    /// Gives up ownership: the work runs though nobody holds it.
    void detach() noexcept { handle_.reset(); }

    [[nodiscard]] bool isPending() const noexcept { return handle_ && handle_->isPending(); }

 private:
    std::shared_ptr<Handle> handle_;
};

/// A registration with the system that ends when it is destroyed or replaced. Move-only; main thread only.
class Subscription {
 public:
    Subscription() = default;
    explicit Subscription(std::function<void()> end) : end_(std::move(end)) {}
    Subscription(Subscription&& other) noexcept : end_(std::exchange(other.end_, nullptr)) {}
    Subscription& operator=(Subscription&& other) noexcept {
        const Subscription old(std::exchange(end_, std::exchange(other.end_, nullptr)));
        return *this;
    }
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    ~Subscription() { end(); }

    /// Ends the registration: its callback is never called again. Safe within that callback.
    void end() {
        if (const auto end = std::exchange(end_, nullptr)) {
            end();
        }
    }

    [[nodiscard]] bool isActive() const noexcept { return static_cast<bool>(end_); }

 private:
    std::function<void()> end_;
};

}  // namespace velko
