#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <utility>

#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Contracts/Contracts.h"

namespace velko::Contracts {

namespace {

using namespace std::chrono_literals;

constexpr MainThread::Uptime shortly = 20ms;
constexpr MainThread::Uptime longEnough = 150ms;

/// The main thread under test, and what its work has written down.
struct Trial {
    MainThread& thread;
    const Pass& pass;
    Checks& checks;

    /// Checks what the work wrote down in order.
    void expectNotes(const char* name, const std::string& notes, const std::string& wanted) const {
        expect(checks, std::string("main thread: ") + name, notes == wanted, notes);
    }
    void expectThat(const char* name, bool passed, std::string seen = {}) const {
        expect(checks, std::string("main thread: ") + name, passed, std::move(seen));
    }
};

void checkOrder(const Trial& trial) {
    std::string notes;
    trial.thread.post([&] {
        notes += "a";
        trial.thread.post([&] { notes += "d"; });
        notes += "b";
    });
    trial.thread.post([&] { notes += "c"; });
    const Task late = trial.thread.after(2 * shortly, [&] { notes += "f"; });
    const Task early = trial.thread.after(shortly, [&] { notes += "e"; });
    const bool ranInside = !notes.empty();
    trial.pass(longEnough);
    trial.expectNotes("work runs by due time, then in order of scheduling", notes, "abcdef");
    trial.expectThat("work never runs inside the call that schedules it", !ranInside);
}

void checkDelay(const Trial& trial) {
    const auto start = trial.thread.now();
    const auto startDate = trial.thread.date();
    MainThread::Uptime ranAt{0};
    std::string notes;
    const Task delayed = trial.thread.after(shortly, [&] { ranAt = trial.thread.now(); });
    const Task overdue = trial.thread.after(-1s, [&] { notes += "overdue"; });
    const bool ranInside = !notes.empty();
    trial.pass(longEnough);
    trial.expectThat("work waits for its whole delay", ranAt - start >= shortly,
                     std::to_string((ranAt - start).count()) + " ns");
    trial.expectThat("a delay below zero is none", notes == "overdue" && !ranInside, notes);
    trial.expectThat("uptime and the wall clock go on",
                     trial.thread.now() - start >= longEnough && trial.thread.date() > startDate);
}

void checkCancelling(const Trial& trial) {
    std::string notes;
    const auto captured = std::make_shared<int>(1);
    Task cancelled = trial.thread.after(shortly, [&notes, captured] { notes += "cancelled"; });
    cancelled.cancel();
    const bool letGo = captured.use_count() == 1;
    {
        const Task destroyed = trial.thread.after(shortly, [&] { notes += "destroyed"; });
    }
    Task replaced = trial.thread.after(shortly, [&] { notes += "replaced"; });
    replaced = trial.thread.after(shortly, [&] { notes += "kept"; });
    Task victim;
    const Task killer = trial.thread.after(shortly, [&] { victim.cancel(); });
    victim = trial.thread.after(shortly, [&] { notes += "victim"; });
    trial.thread.after(shortly, [&] { notes += "+detached"; }).detach();
    trial.pass(longEnough);
    trial.expectNotes("cancelled, destroyed and replaced tasks never run, detached ones do", notes,
                      "kept+detached");
    trial.expectThat("a cancelled task lets go of what it captured at once", letGo);
}

void checkWithinItself(const Trial& trial) {
    // Each piece of work uses what it captured after its own task is destroyed.
    std::string notes;
    const std::string tag = "a text too long to be stored in place, to show memory that was freed";
    const auto note = [&](const std::string& text, const std::string& captured) {
        notes += captured == tag ? text : "?";
    };
    Task cancelling;
    cancelling = trial.thread.after(shortly, [&, tag] {
        cancelling.cancel();
        note("1", tag);
    });
    Task replacing;
    replacing = trial.thread.after(2 * shortly, [&, tag] {
        replacing = trial.thread.after(shortly, [&, tag] { note("4", tag); });
        note("2", tag);
    });
    auto destroying = std::make_unique<Task>();
    *destroying = trial.thread.every(shortly * 5 / 2, [&, tag] {
        destroying.reset();
        note("3", tag);
    });
    trial.pass(longEnough);
    trial.expectNotes("a task may be cancelled, replaced or destroyed within its own work", notes, "1234");
}

void checkRepeating(const Trial& trial) {
    const auto start = trial.thread.now();
    MainThread::Uptime first{0};
    int beats = 0;
    Task beating =
        trial.thread.every(shortly, [&] { first = ++beats == 1 ? trial.thread.now() - start : first; });
    trial.pass(longEnough);
    const int before = beats;
    const auto most = (trial.thread.now() - start) / shortly;
    const bool wasPending = beating.isPending();
    beating.cancel();
    trial.pass(longEnough);
    trial.expectThat("periodic work waits for one period first", first >= shortly,
                     std::to_string(first.count()) + " ns");
    trial.expectThat("periodic work repeats until it is cancelled",
                     before >= 3 && before <= most && beats == before && wasPending && !beating.isPending(),
                     std::to_string(before) + " of " + std::to_string(most) + " beats");
}

void checkPending(const Trial& trial) {
    std::string notes;
    const auto state = [](const Task& task) { return task.isPending() ? "p" : "-"; };
    Task once;
    once = trial.thread.after(shortly, [&] { notes += state(once); });
    Task cancelled = trial.thread.after(shortly, [] {});
    cancelled.cancel();
    notes += std::string(state(Task())) + state(cancelled) + state(once);
    trial.pass(longEnough);
    notes += state(once);
    trial.expectNotes("a task is pending until its work starts or is called off", notes, "--p--");
}

void checkBackground(const Trial& trial) {
    std::string notes;
    const auto captured = std::make_shared<int>(1);
    const auto main = std::this_thread::get_id();
    const Task reading = trial.thread.background(
        [] { return std::make_unique<std::string>("read"); },
        [&](const std::unique_ptr<std::string>& result) {
            notes += *result + (std::this_thread::get_id() == main ? " on main" : " elsewhere");
        });
    Task called =
        trial.thread.background([] { return 1; }, [&notes, captured](int) { notes += "cancelled"; });
    const bool ranInside = !notes.empty();
    called.cancel();
    const bool letGo = captured.use_count() == 1;
    {
        const Task destroyed = trial.thread.background([] { return 1; }, [&](int) { notes += "destroyed"; });
    }
    trial.thread.background([] { return 1; }, [&](int) { notes += ", detached"; }).detach();
    bool readOnIt = true;
    const Task telling =
        trial.thread.background([&thread = std::as_const(trial.thread)] { return thread.isCurrent(); },
                                [&](bool isCurrent) { readOnIt = isCurrent || !trial.thread.isCurrent(); });
    trial.pass(longEnough);
    const bool bothCame = notes == "read on main, detached" || notes == ", detachedread on main";
    trial.expectThat("background answers come on the main thread, cancelled ones never", bothCame, notes);
    trial.expectThat("a background answer never comes inside the call", !ranInside);
    trial.expectThat("a cancelled background task lets go of its continuation", letGo);
    trial.expectThat("who runs on it can tell, and so can who does not", !readOnIt);
}

void checkOtherThreads(const Trial& trial) {
    struct Mark : private NonCopyable {
        std::thread::id& letGoOn;

        Mark(std::thread::id& id) : letGoOn(id) {}
        ~Mark() { letGoOn = std::this_thread::get_id(); }
    };
    std::thread::id ranOn;
    std::thread::id letGoOn;
    std::thread other([&, mark = std::make_shared<Mark>(letGoOn)]() mutable {
        trial.thread.post([&ranOn, kept = std::move(mark)] { ranOn = std::this_thread::get_id(); });
    });
    other.join();
    trial.pass(longEnough);
    const auto main = std::this_thread::get_id();
    trial.expectThat("work posted from another thread runs and ends on the main thread",
                     ranOn == main && letGoOn == main);
}

}  // namespace

void checkMainThread(MainThread& mainThread, const Pass& pass, Checks& checks) {
    const Trial trial{.thread = mainThread, .pass = pass, .checks = checks};
    checkOrder(trial);
    checkDelay(trial);
    checkCancelling(trial);
    checkWithinItself(trial);
    checkRepeating(trial);
    checkPending(trial);
    checkBackground(trial);
    checkOtherThreads(trial);
}

}  // namespace velko::Contracts
