#pragma once

#include <memory>
#include <utility>

#include "VelkoCore/NonCopyable.h"

namespace velko {

/// Scheduled work that its owner can call off. Move-only: destroying or replacing a task cancels it, so
/// an object that owns its tasks outlives none of them. Main thread only.
class Task {
 public:
    /// What a `MainThread` keeps for each piece of work.
    class Handle : private NonCopyable {
     public:
        virtual ~Handle() = default;

        /// The work never starts after this, and what it captured is let go. Harmless when it has run.
        virtual void cancel() noexcept = 0;

        /// Whether the work may still run: neither done nor cancelled.
        [[nodiscard]] virtual bool isPending() const noexcept = 0;
    };

    Task() noexcept = default;
    explicit Task(std::shared_ptr<Handle> handle) noexcept : handle_(std::move(handle)) {}
    Task(Task&&) noexcept = default;
    Task& operator=(Task&& other) noexcept;
    Task(const Task&) = delete;
    Task& operator=(const Task&) = delete;
    ~Task() { cancel(); }

    /// Calls the work off. Safe within the work itself.
    void cancel() noexcept;

    /// Gives up ownership: the work runs though nobody holds it.
    void detach() noexcept { handle_.reset(); }

    [[nodiscard]] bool isPending() const noexcept { return handle_ && handle_->isPending(); }

 private:
    std::shared_ptr<Handle> handle_;
};

}  // namespace velko
