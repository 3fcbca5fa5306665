#include "VelkoEngine/Background/WorkQueue.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace velko {

class WorkQueue::Entry final : public Task::Handle {
 public:
    Entry(std::weak_ptr<Entries> entries, Uptime due, Uptime period, Work work)
        : due_(due), period_(period), work_(std::move(work)), entries_(std::move(entries)) {}

    void cancel() noexcept override {
        pending_ = false;
        if (const auto entries = entries_.lock()) {
            entries->erase(key());
        }
        // Destroying the work may destroy this entry's owner, so it happens last and outside the member.
        const Work dropped = std::exchange(work_, nullptr);
    }

    [[nodiscard]] bool isPending() const noexcept override { return pending_; }

    [[nodiscard]] Key key() const noexcept { return {due_, number_}; }
    [[nodiscard]] Uptime latest() const noexcept { return due_ + period_ / 10; }
    void enlist(std::uint64_t number) noexcept { number_ = number; }

    /// Runs the work. Returns whether it has another turn, which comes after `now`.
    [[nodiscard]] bool run(Uptime now) {
        pending_ = repeats();
        // Moved out of the member while it runs, so that cancelling from within does not destroy it.
        Work work = std::exchange(work_, nullptr);
        work();
        if (!pending_) {
            return false;
        }
        work_ = std::move(work);
        due_ += std::max<Uptime::rep>(1, (now - due_) / period_ + 1) * period_;
        return true;
    }

 private:
    [[nodiscard]] bool repeats() const noexcept { return period_ > Uptime::zero(); }

    Uptime due_;
    Uptime period_;  ///< zero for work that runs once
    std::uint64_t number_ = 0;
    bool pending_ = true;
    Work work_;
    std::weak_ptr<Entries> entries_;
};

WorkQueue::WorkQueue() : entries_(std::make_shared<Entries>()) {}

WorkQueue::~WorkQueue() {
    clear();
}

Task WorkQueue::once(Uptime due, Work work) {
    return schedule(due, Uptime::zero(), std::move(work));
}

Task WorkQueue::repeatedly(Uptime first, Uptime period, Work work) {
    // With a period of zero, no other work would ever run.
    return schedule(first, std::max(period, Uptime{1}), std::move(work));
}

Task WorkQueue::schedule(Uptime due, Uptime period, Work work) {
    auto entry = std::make_shared<Entry>(entries_, due, period, std::move(work));
    insert(entry);
    return Task(std::move(entry));
}

void WorkQueue::insert(const std::shared_ptr<Entry>& entry) {
    entry->enlist(scheduled_++);
    entries_->emplace(entry->key(), entry);
}

std::optional<WorkQueue::Wake> WorkQueue::nextWake() const {
    if (entries_->empty()) {
        return std::nullopt;
    }
    const Uptime at = entries_->begin()->first.first;
    Uptime latest = Uptime::max();
    for (const auto& [key, entry] : *entries_) {
        latest = std::min(latest, entry->latest());
    }
    return Wake{.at = at, .leeway = latest - at};
}

bool WorkQueue::runNext(Uptime now) {
    if (entries_->empty() || entries_->begin()->first.first > now) {
        return false;
    }
    const std::shared_ptr<Entry> entry = entries_->extract(entries_->begin()).mapped();
    if (entry->run(now)) {
        insert(entry);
    }
    return true;
}

void WorkQueue::clear() {
    const auto dropped = std::exchange(*entries_, {});
    for (const auto& [key, entry] : dropped) {
        entry->cancel();
    }
}

bool PostedWork::add(Uptime due, MainThread::Work work) {
    bool wasEmpty = false;
    {
        const std::lock_guard lock(mutex_);
        wasEmpty = posted_.empty();
        posted_.push_back({.due = due, .work = std::move(work)});
    }
    isPosted_.notify_one();
    return wasEmpty;
}

void PostedWork::moveTo(WorkQueue& queue) {
    std::vector<Posted> posted;
    {
        const std::lock_guard lock(mutex_);
        posted.swap(posted_);
    }
    for (Posted& item : posted) {
        queue.once(item.due, std::move(item.work)).detach();
    }
}

void PostedWork::waitUntil(Uptime moment) {
    std::unique_lock lock(mutex_);
    isPosted_.wait_until(lock, std::chrono::steady_clock::time_point(moment),
                         [this] { return !posted_.empty(); });
}

}  // namespace velko
