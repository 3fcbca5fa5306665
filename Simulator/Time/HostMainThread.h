#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include "Simulator/Time/SimulatedMainThread.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Background/WorkQueue.h"

namespace velko {

/// A few threads that do jobs in the order in which they come. When no thread is idle, a job starts a new
/// one, up to a limit.
class ReadPool final : private NonCopyable {
 public:
    using Job = std::function<void()>;

    explicit ReadPool(std::size_t mostThreads) : mostThreads_(mostThreads) {}
    /// Drops the jobs that have not begun, and waits for those that have begun.
    ~ReadPool();

    /// Any thread.
    void add(Job job);

    /// Waits until no job is left. Not from within one.
    void wait();

 private:
    void work();

    const std::size_t mostThreads_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Job> jobs_;
    std::size_t busy_ = 0;
    bool closed_ = false;
    std::vector<std::thread> threads_;
};

/// A main thread on the host's clock. It is the thread that makes this object and calls its `run` functions.
///
/// Background reads run on other threads. When this object is destroyed, pending work is dropped without
/// running, and reads that have begun are waited for.
class HostMainThread final : public MachineThread {
 public:
    /// How many reads run at once. It is enough for two gatherings and a click, even if every app that they
    /// ask hangs.
    static constexpr std::size_t mostReadsAtOnce = 12;

    HostMainThread() = default;
    ~HostMainThread() override;

    [[nodiscard]] bool isCurrent() const noexcept override { return std::this_thread::get_id() == self_; }
    [[nodiscard]] Uptime now() const override;
    [[nodiscard]] PreciseDate date() const override;
    void post(Work work) override;
    [[nodiscard]] Task after(Uptime delay, Work work) override;
    [[nodiscard]] Task every(Uptime period, Work work) override;

    /// Blocks the calling thread, whichever it is.
    void spend(Uptime cost) override;
    void happen(Uptime delay, Work work) override;

    /// Runs everything that falls due within a time. Not from within work.
    void runFor(Uptime duration);

    /// Runs what falls due until `isDone`, which is called before each piece of work. Returns false if that
    /// takes longer than `limit`. Not from within work.
    [[nodiscard]] bool runUntil(const std::function<bool()>& isDone, Uptime limit);

    /// Waits until every read that was asked for has been made. Their answers have not been delivered yet.
    void waitForReads() { pool_.wait(); }

 protected:
    [[nodiscard]] Task startBackground(Read read, Then then) override;

 private:
    void waitForWork(Uptime end);

    std::thread::id self_ = std::this_thread::get_id();
    WorkQueue queue_;
    PostedWork posted_;
    ReadPool pool_{mostReadsAtOnce};  // destroyed first, because its last reads still post their answers
};

}  // namespace velko
