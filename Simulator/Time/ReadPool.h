#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include "VelkoCore/NonCopyable.h"

namespace velko {

/// A few threads that do jobs in the order in which they come. A thread is started when there is nobody
/// idle for a job, up to a limit.
class ReadPool final : private NonCopyable {
 public:
    using Job = std::function<void()>;

    explicit ReadPool(std::size_t mostThreads) : mostThreads_(mostThreads) {}
    /// Drops the jobs that have not begun and waits for those that have.
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

}  // namespace velko
