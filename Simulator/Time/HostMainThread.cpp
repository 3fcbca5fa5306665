#include "Simulator/Time/HostMainThread.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <thread>
#include <utility>

#include "VelkoEngine/Background/Reads.h"

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
        job = nullptr;  // destroys the captures before the job counts as done
        lock.lock();
        --busy_;
        changed_.notify_all();
    }
}

HostMainThread::~HostMainThread() = default;

MainThread::Uptime HostMainThread::now() const {
    return std::chrono::steady_clock::now().time_since_epoch();
}

PreciseDate HostMainThread::date() const {
    return std::chrono::floor<PreciseDate::duration>(std::chrono::system_clock::now());
}

void HostMainThread::post(Work work) {
    posted_.add(now(), std::move(work));
}

Task HostMainThread::after(Uptime delay, Work work) {
    return queue_.once(now() + std::max(delay, Uptime::zero()), std::move(work));
}

Task HostMainThread::every(Uptime period, Work work) {
    return queue_.repeatedly(now() + std::max(period, Uptime::zero()), period, std::move(work));
}

Task HostMainThread::startBackground(Read read, Then then) {
    auto underWay = std::make_shared<BackgroundRead>(std::move(read), std::move(then));
    Task task(underWay);
    pool_.add([this, underWay = std::move(underWay)]() mutable {
        underWay->run();
        // Only the posted work owns the read now, so it is destroyed on the main thread.
        post([underWay = std::move(underWay)] { underWay->deliver(); });
    });
    return task;
}

void HostMainThread::spend(Uptime cost) {
    std::this_thread::sleep_for(cost);
}

void HostMainThread::happen(Uptime delay, Work work) {
    after(delay, std::move(work)).detach();
}

void HostMainThread::runFor(Uptime duration) {
    static_cast<void>(runUntil([] { return false; }, duration));
}

bool HostMainThread::runUntil(const std::function<bool()>& isDone, Uptime limit) {
    const Uptime end = now() + limit;
    while (!isDone()) {
        const Uptime time = now();
        posted_.moveTo(queue_);
        if (queue_.runNext(std::min(time, end))) {
            continue;
        }
        if (time >= end) {
            return false;
        }
        waitForWork(end);
    }
    return true;
}

/// Sleeps until work is due or posted, at most until `end`.
void HostMainThread::waitForWork(Uptime end) {
    const auto wake = queue_.nextWake();
    posted_.waitUntil(wake ? std::min(wake->at, end) : end);
}

}  // namespace velko
