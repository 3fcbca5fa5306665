#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

/// A main thread that a simulated machine can run on.
class MachineThread : public MainThread {
 public:
    /// The running code waits that long for an answer.
    virtual void spend(Uptime cost) = 0;

    /// The machine itself, and not Velko, does something after `delay`.
    virtual void happen(Uptime delay, Work work) = 0;
};

/// The main thread in virtual time. Nothing really waits, and the same calls always give the same order of
/// events.
///
/// A background read runs inside the call that starts it. Its answer comes after the time that the read has
/// spent. All functions but `post` are called on one thread. When this object is destroyed, pending work is
/// dropped without running.
class SimulatedMainThread final : public MachineThread {
 public:
    explicit SimulatedMainThread(PreciseDate date);
    ~SimulatedMainThread() override;

    /// Not while a background read is being made.
    [[nodiscard]] bool isCurrent() const noexcept override { return !meter_; }
    [[nodiscard]] Uptime now() const override;
    [[nodiscard]] PreciseDate date() const override;
    void post(Work work) override;
    [[nodiscard]] Task after(Uptime delay, Work work) override;
    [[nodiscard]] Task every(Uptime period, Work work) override;

    /// Lets uptime pass, and runs everything that falls due, in order of due time and then of scheduling.
    /// Work that blocks may move the clock further than `duration`; what falls due in that extra time waits
    /// for the next call. Not from within work.
    void advance(Uptime duration);

    /// Whether the system delays timers now, as it does for programs that nobody looks at. It is asked
    /// whenever a timer falls due. A delayed timer waits for the next beat, which all delayed timers share.
    /// Posted work and answers of reads are never delayed. Without this function, no timer is.
    std::function<bool()> isNapping;
    static constexpr std::chrono::seconds napBeat{8};
    /// Timers that a nap has delayed are due at once.
    void wakeFromNap();

    /// The machine sleeps: uptime and timers stand still, the wall clock goes on.
    void sleepFor(std::chrono::milliseconds duration);

    /// Sets the wall clock, as a person or a time server does.
    void setDate(PreciseDate date);

    /// Inside a background read this delays the read's answer. Elsewhere it blocks the main thread.
    void spend(Uptime cost) override;

    /// It runs in order with all other work, but does not count as a wake-up.
    void happen(Uptime delay, Work work) override;

    /// How much of Velko's work waits: tasks, and what was posted.
    [[nodiscard]] std::size_t waiting() const;

    /// How often the main thread woke up to work. Several pieces of work that are due together count once.
    [[nodiscard]] std::uint64_t wakeUps() const noexcept { return wakeUps_; }
    /// How many of these came more than 50 ms after the work before: a battery pays for each.
    [[nodiscard]] std::uint64_t bursts() const noexcept { return bursts_; }

    /// Called after each piece of work, to watch its results. It must not change anything.
    std::function<void()> onTurn;

 protected:
    [[nodiscard]] Task startBackground(Read read, Then then) override;

 private:
    class Entry;
    struct Queue;

    [[nodiscard]] std::shared_ptr<Entry> schedule(Uptime delay, Work work);
    [[nodiscard]] Task timer(Uptime delay, std::optional<Uptime> period, Work work);
    [[nodiscard]] std::shared_ptr<Entry> takeDue(Uptime target);
    [[nodiscard]] bool holdUp(const std::shared_ptr<Entry>& entry);
    void run(const std::shared_ptr<Entry>& entry);
    void repeat(const std::shared_ptr<Entry>& entry);

    std::shared_ptr<Queue> queue_;
    PreciseDate dateSet_;
    Uptime dateSetAt_{0};
    std::optional<Uptime> meter_;      ///< the time that the running background read has spent
    std::optional<Uptime> busyUntil_;  ///< when work last ended within this `advance`
    std::uint64_t wakeUps_ = 0;
    std::uint64_t bursts_ = 0;
    std::optional<Uptime> lastWork_;
    bool advancing_ = false;
};

/// What Velko has told the system that it is busy with. The system delays the timers of a program that is not
/// busy and that nobody has looked at for five minutes.
class SimulatedActivity final : public Activity {
 public:
    /// The main thread outlives this.
    explicit SimulatedActivity(SimulatedMainThread& mainThread) : mainThread_(mainThread) {}

    [[nodiscard]] Subscription begin(const std::string& reason) override;

    /// Why timers must not be delayed now, oldest first. Empty when they may be.
    [[nodiscard]] std::vector<std::string> reasons() const { return {reasons_.begin(), reasons_.end()}; }

    /// A person has looked at Velko, so no timer is delayed for a while.
    void lookedAt();
    /// The system begins to delay timers now, until a person looks at Velko.
    void nap() { mustNap_ = true; }
    /// Whether the system delays timers. `isSeen`: a person can see something of Velko's that is open.
    [[nodiscard]] bool isNapping(bool isSeen) const;

 private:
    static constexpr std::chrono::minutes unseenUntilNap{5};

    SimulatedMainThread& mainThread_;
    std::list<std::string> reasons_;
    MainThread::Uptime lookedAtAt_{};
    bool mustNap_ = false;
};

}  // namespace velko
