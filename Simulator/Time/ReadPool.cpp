#include "Simulator/Time/ReadPool.h"

#include <algorithm>
#include <utility>

namespace velko {

ReadPool::~ReadPool() {
    std::deque<Job> dropped;
    {
        const std::lock_guard lock(mutex_);
        closed_ = true;
        dropped.swap(jobs_);
    }
    changed_.notify_all();
    std::ranges::for_each(threads_, &std::thread::join);
}

void ReadPool::add(Job job) {
    {
        const std::lock_guard lock(mutex_);
        jobs_.push_back(std::move(job));
        if (jobs_.size() + busy_ > threads_.size() && threads_.size() < mostThreads_) {
            threads_.emplace_back([this] { work(); });
        }
    }
    changed_.notify_all();
}

void ReadPool::wait() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return jobs_.empty() && busy_ == 0; });
}

void ReadPool::work() {
    std::unique_lock lock(mutex_);
    while (true) {
        changed_.wait(lock, [this] { return closed_ || !jobs_.empty(); });
        if (closed_) {
            return;
        }
        Job job = std::move(jobs_.front());
        jobs_.pop_front();
        ++busy_;
        lock.unlock();
        job();
        job = nullptr;  // what it holds is gone before it counts as done
        lock.lock();
        --busy_;
        changed_.notify_all();
    }
}

}  // namespace velko
