#pragma once

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// One background read and its answer. A main thread with real threads keeps one for each read: another
/// thread runs it, and then the main thread delivers the answer. Everything but `run` belongs to the main
/// thread.
class BackgroundRead final : public Task::Handle {
 public:
    using Read = std::function<std::shared_ptr<void>()>;
    using Then = std::function<void(const std::shared_ptr<void>&)>;

    BackgroundRead(Read read, Then then) : read_(std::move(read)), then_(std::move(then)) {}

    void cancel() noexcept override { const Then dropped = std::exchange(then_, nullptr); }
    [[nodiscard]] bool isPending() const noexcept override { return static_cast<bool>(then_); }

    /// Makes the read, and destroys what it captured. Once, on any thread, before `deliver`.
    void run() {
        result_ = read_();
        read_ = nullptr;
    }

    /// Hands over the result, unless the answer is no longer wanted.
    void deliver() {
        const auto result = std::exchange(result_, nullptr);
        if (const Then then = std::exchange(then_, nullptr)) {
            then(result);
        }
    }

 private:
    Read read_;
    std::shared_ptr<void> result_;
    Then then_;
};

/// How many background reads of one gathering run at a time. A read that hangs blocks a thread, so there must
/// be several, but not many.
inline constexpr std::size_t gatheredReadsAtOnce = 4;

/// The reads that run now, as one task. The reads point to it weakly, so that no object owns itself.
class ReadsUnderWay final : public Task::Handle {
 public:
    /// An owner that detaches the task wants the gathering to go on.
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

    /// Begins the next waiting read, if there is one, in a free place.
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

/// Background reads that run one at a time, in the order of the requests, and never inside the call that
/// asks. When too many wait, the oldest is dropped. Main thread. Destroying this cancels the reads that are
/// not answered.
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
                                           const auto then = then_;  // it may destroy this object
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
