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

/// A main thread that a simulated machine can run on: it says how that machine's own time passes.
class MachineThread : public MainThread {
 public:
    /// Time that the running code waits for somebody's answer.
    virtual void spend(Uptime cost) = 0;

    /// Something that the machine does, not Velko, after `delay`.
    virtual void happen(Uptime delay, Work work) = 0;
};

/// The main thread in virtual time: nothing waits, and the same run gives the same order of events.
///
/// A background read happens inside the call that starts it; its answer comes after what the read has
/// spent. Everything is called on one thread, but for `post`. Work that is pending when the main thread
/// goes is dropped without running.
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

    /// Lets uptime pass and runs everything that falls due within it, in order of due time and then of
    /// scheduling. Work that blocks may carry the clock further than asked; what falls due in that
    /// overrun waits for the next call. Not from within work.
    void advance(Uptime duration);

    /// Whether the system stretches timers now, as it does for programs that nobody looks at. Asked whenever
    /// one falls due: it then waits for the next of the beats that all such timers share. Work that was
    /// posted, and answers of reads, come in time. Absent: never.
    std::function<bool()> isNapping;
    static constexpr std::chrono::seconds napBeat{8};
    /// What a nap has held up is due at once.
    void wakeFromNap();

    /// The machine sleeps: uptime and timers stand still, the wall clock goes on.
    void sleepFor(std::chrono::milliseconds duration);

    /// Sets the wall clock, as a person or a time server does.
    void setDate(PreciseDate date);

    /// Inside a background read it delays that read's answer, elsewhere it blocks the main thread.
    void spend(Uptime cost) override;

    /// Comes in order with everything else, but wakes nobody by itself.
    void happen(Uptime delay, Work work) override;

    /// Work of Velko's that waits: tasks and what was posted.
    [[nodiscard]] std::size_t waiting() const;

    /// How often the main thread went from waiting to work: once per burst, however much was due.
    [[nodiscard]] std::uint64_t wakeUps() const noexcept { return wakeUps_; }

    /// Called after each piece of work, to watch what comes of it; it must not change anything.
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
    std::optional<Uptime> meter_;      ///< what the background read in progress has spent
    std::optional<Uptime> busyUntil_;  ///< when work last ended within this `advance`
    std::uint64_t wakeUps_ = 0;
    bool advancing_ = false;
};

/// What Velko has told the system that it is busy with, and when the system stretches its timers: after five
/// minutes in which nobody has looked at a program that is busy with nothing.
class SimulatedActivity final : public Activity {
 public:
    /// The main thread outlives this.
    explicit SimulatedActivity(SimulatedMainThread& mainThread) : mainThread_(mainThread) {}

    [[nodiscard]] Subscription begin(const std::string& reason) override;

    /// Why timers have to come in time now, oldest first; empty when they need not.
    [[nodiscard]] std::vector<std::string> reasons() const { return {reasons_.begin(), reasons_.end()}; }

    /// Somebody has looked at Velko: no timer is stretched for a while.
    void lookedAt();
    /// The system begins to stretch timers at once, until somebody looks at Velko.
    void nap() { mustNap_ = true; }
    /// Whether it stretches them. `isSeen`: something of Velko's is open before somebody's eyes.
    [[nodiscard]] bool isNapping(bool isSeen) const;

 private:
    static constexpr std::chrono::minutes unseenUntilNap{5};

    SimulatedMainThread& mainThread_;
    std::list<std::string> reasons_;
    MainThread::Uptime lookedAtAt_{};
    bool mustNap_ = false;
};

}  // namespace velko
