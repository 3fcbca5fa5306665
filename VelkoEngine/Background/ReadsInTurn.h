#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <utility>

#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// Background reads that are made one at a time, in the order in which they were asked for, and never
/// inside the call that asks. Of too many that wait, the oldest is dropped. Main thread; what is not
/// answered when this is destroyed is never answered.
template <class Input, class Result>
class ReadsInTurn final : private NonCopyable {
 public:
    /// `read` runs off the main thread and captures values and ports only; `then` runs on the main thread.
    ReadsInTurn(MainThread& mainThread, std::size_t mostWaiting, std::function<Result(const Input&)> read,
                std::function<void(Result)> then)
        : mainThread_(mainThread),
          mostWaiting_(mostWaiting),
          read_(std::move(read)),
          then_(std::move(then)) {}

    void add(Input input) {
        waiting_.push_back(std::move(input));
        if (waiting_.size() > mostWaiting_) {
            waiting_.pop_front();
        }
        if (!task_.isPending()) {
            task_ = mainThread_.after(std::chrono::nanoseconds::zero(), [this] { startNext(); });
        }
    }

    /// Forgets the reads that wait and the one under way.
    void clear() {
        waiting_.clear();
        task_.cancel();
    }

 private:
    void startNext() {
        Input input = std::move(waiting_.front());
        waiting_.pop_front();
        task_ = mainThread_.background([read = read_, input = std::move(input)] { return read(input); },
                                       [this](Result result) {
                                           if (!waiting_.empty()) {
                                               startNext();
                                           }
                                           const auto then = then_;  // it may destroy this
                                           then(std::move(result));
                                       });
    }

    MainThread& mainThread_;
    std::size_t mostWaiting_;
    std::function<Result(const Input&)> read_;
    std::function<void(Result)> then_;
    std::deque<Input> waiting_;
    Task task_;  ///< the read under way, or the one that is about to begin
};

}  // namespace velko
