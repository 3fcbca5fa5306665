#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <utility>

#include "VelkoEngine/Background/WorkQueue.h"
#include "VelkoEngine/Contracts/Contracts.h"

namespace velko {
namespace {

using namespace std::chrono_literals;
using Wake = WorkQueue::Wake;

/// A main thread on a work queue, with a clock that only `pass` moves. It runs the queue exactly when the
/// queue asks.
class QueueThread final : public MainThread {
 public:
    [[nodiscard]] bool isCurrent() const noexcept override { return !isReading_; }
    [[nodiscard]] Uptime now() const override { return now_; }
    [[nodiscard]] PreciseDate date() const override {
        return PreciseDate(std::chrono::floor<PreciseDate::duration>(now_));
    }
    void post(Work work) override { queue_.once(now_, std::move(work)).detach(); }
    [[nodiscard]] Task after(Uptime delay, Work work) override {
        return queue_.once(now_ + std::max(delay, Uptime::zero()), std::move(work));
    }
    [[nodiscard]] Task every(Uptime period, Work work) override {
        return queue_.repeatedly(now_ + period, period, std::move(work));
    }

    void pass(Uptime duration) {
        const Uptime end = now_ + duration;
        for (auto wake = queue_.nextWake(); wake && wake->at <= end; wake = queue_.nextWake()) {
            now_ = std::max(now_, wake->at);
            queue_.runNext(now_);
        }
        now_ = end;
    }

 protected:
    [[nodiscard]] Task startBackground(Read read, Then then) override {
        isReading_ = true;
        auto result = read();
        isReading_ = false;
        return queue_.once(now_, [result = std::move(result), then = std::move(then)] { then(result); });
    }

 private:
    Uptime now_ = 1h;
    bool isReading_ = false;
    WorkQueue queue_;
};

TEST(WorkQueue, MakesAMainThreadThatKeepsTheContract) {
    QueueThread thread;
    Contracts::Checks checks;
    Contracts::checkMainThread(thread, [&](MainThread::Uptime duration) { thread.pass(duration); }, checks);
    EXPECT_FALSE(checks.empty());
    for (const auto& check : checks) {
        EXPECT_TRUE(check.passed) << check.name << ": " << check.seen;
    }
}

TEST(WorkQueue, WakesForTheFirstAndLetsOnlyRepeatedWorkWait) {
    WorkQueue queue;
    EXPECT_EQ(queue.nextWake(), std::nullopt);
    const Task slow = queue.repeatedly(100s, 30s, [] {});
    EXPECT_EQ(queue.nextWake(), (Wake{100s, 3s}));
    Task exact = queue.once(102s, [] {});
    EXPECT_EQ(queue.nextWake(), (Wake{100s, 2s}));
    const Task fast = queue.repeatedly(99s, 1s, [] {});
    EXPECT_EQ(queue.nextWake(), (Wake{99s, 100ms}));
    exact = queue.once(50s, [] {});
    EXPECT_EQ(queue.nextWake(), (Wake{50s, 0s})) << "replaced work is forgotten, the new one is on time";
}

TEST(WorkQueue, MakesUpForMissedTurnsOnceAndKeepsTheBeat) {
    WorkQueue queue;
    int beats = 0;
    const Task beating = queue.repeatedly(10s, 10s, [&] { ++beats; });
    EXPECT_FALSE(queue.runNext(9999ms));
    EXPECT_TRUE(queue.runNext(45s));
    EXPECT_FALSE(queue.runNext(45s));
    EXPECT_EQ(beats, 1);
    EXPECT_EQ(queue.nextWake()->at, 50s);
    EXPECT_TRUE(queue.runNext(50s)) << "due at that very moment";
    EXPECT_EQ(queue.nextWake()->at, 60s);
}

}  // namespace
}  // namespace velko
