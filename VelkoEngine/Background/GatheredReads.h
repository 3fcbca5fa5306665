#pragma once

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// How many background reads of one gathering are under way at a time. Reads that hang block a thread
/// each, so several are needed, and not many.
inline constexpr std::size_t gatheredReadsAtOnce = 4;

/// The reads under way, seen as one piece of work. The reads know it weakly, so nothing owns itself.
class ReadsUnderWay final : public Task::Handle {
 public:
    /// An owner that lets go without cancelling wants the gathering to go on by itself.
    ~ReadsUnderWay() override { std::ranges::for_each(tasks, &Task::detach); }

    void cancel() noexcept override { std::ranges::for_each(tasks, &Task::cancel); }

    [[nodiscard]] bool isPending() const noexcept override {
        return std::ranges::any_of(tasks, &Task::isPending);
    }

    std::array<Task, gatheredReadsAtOnce> tasks;
};

/// One background read per input. Kept alive by the reads under way.
template <class Input, class Read, class Then>
class Gathering final : public std::enable_shared_from_this<Gathering<Input, Read, Then>> {
 public:
    using Result = std::invoke_result_t<const Read&, const Input&>;

    Gathering(MainThread& mainThread, std::vector<Input> inputs, Read read, Then then,
              std::weak_ptr<ReadsUnderWay> underWay)
        : mainThread_(mainThread),
          inputs_(std::move(inputs)),
          results_(inputs_.size()),
          read_(std::move(read)),
          then_(std::move(then)),
          underWay_(std::move(underWay)) {}

    /// Begins the next read that waits, if there is one, in a place that is free.
    void startNext(std::size_t place) {
        if (started_ == inputs_.size()) {
            return;
        }
        const std::size_t index = started_++;
        Task task =
            mainThread_.background([read = read_, input = std::move(inputs_[index])] { return read(input); },
                                   [self = this->shared_from_this(), place, index](Result result) {
                                       self->finish(place, index, std::move(result));
                                   });
        if (const auto underWay = underWay_.lock()) {
            underWay->tasks.at(place) = std::move(task);
        } else {
            task.detach();
        }
    }

 private:
    void finish(std::size_t place, std::size_t index, Result result) {
        results_[index] = std::move(result);
        ++finished_;
        startNext(place);
        if (finished_ == results_.size()) {
            then_(std::move(results_));
        }
    }

    MainThread& mainThread_;
    std::vector<Input> inputs_;
    std::vector<Result> results_;
    std::size_t started_ = 0;
    std::size_t finished_ = 0;
    Read read_;
    Then then_;
    std::weak_ptr<ReadsUnderWay> underWay_;
};

/// Calls `read` for every input in the background, a few at a time, and `then` once, on the main thread,
/// with all results in the order of the inputs. `read` captures values and ports only. Even for no inputs
/// the answer comes later, never within the call. Cancelling the task ends the whole gathering.
template <class Input, class Read, class Then>
[[nodiscard]] Task gatherReads(MainThread& mainThread, std::vector<Input> inputs, Read read, Then then) {
    using Gathered = Gathering<Input, Read, Then>;
    if (inputs.empty()) {
        return mainThread.after(std::chrono::nanoseconds::zero(), [then = std::move(then)]() mutable {
            then(std::vector<typename Gathered::Result>{});
        });
    }
    const auto underWay = std::make_shared<ReadsUnderWay>();
    const auto gathering =
        std::make_shared<Gathered>(mainThread, std::move(inputs), std::move(read), std::move(then), underWay);
    for (std::size_t place = 0; place < gatheredReadsAtOnce; ++place) {
        gathering->startNext(place);
    }
    return Task(underWay);
}

}  // namespace velko
