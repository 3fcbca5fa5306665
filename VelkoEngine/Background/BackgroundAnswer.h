#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// A background read's answer on its way: what a main thread with real threads keeps for each read. Any
/// thread may hold it; everything else, its end included, belongs to the main thread.
class BackgroundAnswer final : public Task::Handle {
 public:
    using Then = std::function<void(const std::shared_ptr<void>&)>;

    explicit BackgroundAnswer(Then then) : then_(std::move(then)) {}

    void cancel() noexcept override { const Then dropped = std::exchange(then_, nullptr); }
    [[nodiscard]] bool isPending() const noexcept override { return static_cast<bool>(then_); }

    /// Hands over the result, unless the answer is no longer wanted.
    void deliver(const std::shared_ptr<void>& result) {
        if (const Then then = std::exchange(then_, nullptr)) {
            then(result);
        }
    }

 private:
    Then then_;
};

}  // namespace velko
