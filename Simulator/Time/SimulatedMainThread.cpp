#include "Simulator/Time/SimulatedMainThread.h"

#include <algorithm>
#include <cassert>
#include <map>
#include <mutex>
#include <utility>

namespace velko {

struct SimulatedMainThread::Queue {
    using Key = std::pair<Uptime, std::uint64_t>;  // due time, then order of scheduling

    std::mutex mutex;  // `post` is called on any thread; only the main thread uses what is in an entry
    std::map<Key, std::shared_ptr<Entry>> entries;
    Uptime now{0};
    std::uint64_t nextOrder = 0;
    bool isClosed = false;

    [[nodiscard]] Uptime time() {
        const std::lock_guard lock(mutex);
        return now;
    }
};

class SimulatedMainThread::Entry final : public Task::Handle {
 public:
    explicit Entry(Work initialWork) : work(std::move(initialWork)) {}

    void cancel() noexcept override {
        // The queue is not locked while the captures are destroyed, because they may cancel or schedule other
        // work.
        const Work captures = std::exchange(work, nullptr);
        isWaiting = false;
        if (const auto shared = queue.lock()) {
            const std::lock_guard lock(shared->mutex);
            shared->entries.erase(key);
        }
    }

    [[nodiscard]] bool isPending() const noexcept override { return isWaiting; }

    Work work;  // empty while it runs
    bool isWaiting = true;
    bool wakes = true;
    bool isTimer = false;
    std::optional<Uptime> period;
    std::optional<Uptime> heldUpSince;  // by a nap
    Queue::Key key;
    std::weak_ptr<Queue> queue;
};

namespace {

constexpr std::chrono::milliseconds shortestPeriod{1};

/// A machine that has just worked is not asleep again yet.
constexpr std::chrono::milliseconds sameBurst{50};

}  // namespace

SimulatedMainThread::SimulatedMainThread(PreciseDate date)
    : queue_(std::make_shared<Queue>()), dateSet_(date) {}

SimulatedMainThread::~SimulatedMainThread() {
    std::map<Queue::Key, std::shared_ptr<Entry>> dropped;
    {
        const std::lock_guard lock(queue_->mutex);
        queue_->isClosed = true;
        dropped.swap(queue_->entries);
    }
    for (const auto& [key, entry] : dropped) {
        entry->cancel();
    }
}

MainThread::Uptime SimulatedMainThread::now() const {
    return queue_->time();
}

PreciseDate SimulatedMainThread::date() const {
    return dateSet_ + std::chrono::floor<std::chrono::milliseconds>(now() - dateSetAt_);
}

std::shared_ptr<SimulatedMainThread::Entry> SimulatedMainThread::schedule(Uptime delay, Work work) {
    auto entry = std::make_shared<Entry>(std::move(work));
    entry->queue = queue_;
    const std::lock_guard lock(queue_->mutex);
    entry->key = {queue_->now + std::max(delay, Uptime{0}), queue_->nextOrder++};
    if (queue_->isClosed) {
        entry->isWaiting = false;
    } else {
        queue_->entries.emplace(entry->key, entry);
    }
    return entry;
}

void SimulatedMainThread::post(Work work) {
    static_cast<void>(schedule(Uptime{0}, std::move(work)));
}

Task SimulatedMainThread::after(Uptime delay, Work work) {
    return timer(delay, std::nullopt, std::move(work));
}

Task SimulatedMainThread::every(Uptime period, Work work) {
    const Uptime wait = std::max<Uptime>(period, shortestPeriod);
    return timer(wait, wait, std::move(work));
}

Task SimulatedMainThread::timer(Uptime delay, std::optional<Uptime> period, Work work) {
    auto entry = schedule(delay, std::move(work));
    entry->isTimer = delay > Uptime{0};
    entry->period = period;
    return Task(std::move(entry));
}

Task SimulatedMainThread::startBackground(Read read, Then then) {
    const auto outerMeter = std::exchange(meter_, Uptime{0});
    auto result = read();
    const Uptime cost = std::exchange(meter_, outerMeter).value_or(Uptime{0});
    return Task(schedule(cost, [then = std::move(then), result = std::move(result)] { then(result); }));
}

void SimulatedMainThread::happen(Uptime delay, Work work) {
    schedule(delay, std::move(work))->wakes = false;
}

std::size_t SimulatedMainThread::waiting() const {
    const std::lock_guard lock(queue_->mutex);
    return static_cast<std::size_t>(
        std::ranges::count_if(queue_->entries, [](const auto& each) { return each.second->wakes; }));
}

void SimulatedMainThread::spend(Uptime cost) {
    if (meter_) {
        *meter_ += cost;
        return;
    }
    const std::lock_guard lock(queue_->mutex);
    queue_->now += cost;
}

void SimulatedMainThread::sleepFor(std::chrono::milliseconds duration) {
    setDate(date() + duration);
}

void SimulatedMainThread::setDate(PreciseDate date) {
    dateSet_ = date;
    dateSetAt_ = now();
}

void SimulatedMainThread::advance(Uptime duration) {
    assert(!advancing_ && "advance is not for work to call");
    advancing_ = true;
    const Uptime target = now() + std::max(duration, Uptime{0});
    busyUntil_.reset();
    while (const auto entry = takeDue(target)) {
        if (!holdUp(entry)) {
            run(entry);
        }
    }
    {
        const std::lock_guard lock(queue_->mutex);
        queue_->now = std::max(queue_->now, target);
    }
    advancing_ = false;
}

std::shared_ptr<SimulatedMainThread::Entry> SimulatedMainThread::takeDue(Uptime target) {
    const std::lock_guard lock(queue_->mutex);
    if (queue_->entries.empty() || queue_->entries.begin()->first.first > target) {
        return nullptr;
    }
    auto entry = queue_->entries.extract(queue_->entries.begin()).mapped();
    queue_->now = std::max(queue_->now, entry->key.first);
    return entry;
}

bool SimulatedMainThread::holdUp(const std::shared_ptr<Entry>& entry) {
    if (!entry->isTimer || entry->heldUpSince || !isNapping || !isNapping()) {
        return false;
    }
    const std::lock_guard lock(queue_->mutex);
    entry->heldUpSince = entry->key.first;
    entry->key.first = (entry->key.first / napBeat + 1) * Uptime(napBeat);
    queue_->entries.emplace(entry->key, entry);
    return true;
}

void SimulatedMainThread::wakeFromNap() {
    const std::lock_guard lock(queue_->mutex);
    std::map<Queue::Key, std::shared_ptr<Entry>> rearranged;
    for (const auto& [key, entry] : queue_->entries) {
        entry->key.first = entry->heldUpSince.value_or(key.first);
        rearranged.emplace(entry->key, entry);
    }
    queue_->entries.swap(rearranged);
}

void SimulatedMainThread::run(const std::shared_ptr<Entry>& entry) {
    if (entry->wakes && busyUntil_ != now()) {
        ++wakeUps_;
        bursts_ += !lastWork_ || now() - *lastWork_ > sameBurst ? 1 : 0;
    }
    // The work is moved out of its entry while it runs, so that it may cancel or replace itself.
    Work work = std::exchange(entry->work, nullptr);
    entry->heldUpSince.reset();
    entry->isWaiting = entry->period.has_value();
    work();
    if (entry->wakes) {
        busyUntil_ = now();
        lastWork_ = now();
    }
    if (entry->isWaiting) {
        entry->work = std::move(work);
        repeat(entry);
    }
    if (onTurn) {
        onTurn();
    }
}

void SimulatedMainThread::repeat(const std::shared_ptr<Entry>& entry) {
    const std::lock_guard lock(queue_->mutex);
    // Turns that were missed while the thread was blocked are made up by one. The next turn is at its usual
    // time.
    const Uptime period = entry->period.value_or(Uptime::max());
    const auto beats = (queue_->now - entry->key.first) / period + 1;
    entry->key = {entry->key.first + beats * period, queue_->nextOrder++};
    queue_->entries.emplace(entry->key, entry);
}

Subscription SimulatedActivity::begin(const std::string& reason) {
    const auto place = reasons_.insert(reasons_.end(), reason);
    mainThread_.wakeFromNap();
    return Subscription([this, place] { reasons_.erase(place); });
}

void SimulatedActivity::lookedAt() {
    mustNap_ = false;
    lookedAtAt_ = mainThread_.now();
    mainThread_.wakeFromNap();
}

bool SimulatedActivity::isNapping(bool isSeen) const {
    return !isSeen && reasons_.empty() && (mustNap_ || mainThread_.now() - lookedAtAt_ >= unseenUntilNap);
}

}  // namespace velko
