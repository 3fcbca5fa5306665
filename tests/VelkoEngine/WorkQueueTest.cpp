#include <chrono>
#include <gtest/gtest.h>
#include <string>

#include "VelkoEngine/WorkQueue.h"

namespace velko {
namespace {

using namespace std::chrono_literals;
using Wake = WorkQueue::Wake;

TEST(WorkQueue, RunsInOrderOfTimeAndThenOfSchedulingWhatIsNotCalledOff) {
    std::string ran;
    Task held;
    Task outliving;
    {
        WorkQueue queue;
        const auto note = [&ran](char what) { return [&ran, what] { ran += what; }; };
        queue.once(3s, note('d')).detach();
        queue.once(1s, note('a')).detach();
        queue.once(1s, note('b')).detach();
        Task beat = queue.repeatedly(2s, 1ms, [&] {
            ran += 'c';
            beat.cancel();
        });
        held = queue.once(4s, [&] { held = queue.once(4s, note('e')); });
        queue.once(5s, note('x')).cancel();
        for (int turn = 0; turn < 9; ++turn) {
            queue.runNext(5s);
        }
        EXPECT_EQ(ran, "abcde");
        EXPECT_FALSE(beat.isPending() || held.isPending());
        outliving = queue.once(6s, note('x'));
        EXPECT_TRUE(outliving.isPending());
    }
    EXPECT_FALSE(outliving.isPending());
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
    EXPECT_TRUE(queue.runNext(45s) && !queue.runNext(45s) && queue.runNext(50s));
    EXPECT_EQ(beats, 2);
    EXPECT_EQ(queue.nextWake()->at, 60s);
}

}  // namespace
}  // namespace velko
