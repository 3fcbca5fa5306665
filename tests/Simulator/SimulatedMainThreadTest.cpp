#include <gtest/gtest.h>
#include <string>

#include "Simulator/Time/SimulatedMainThread.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

class SimulatedMainThreadTest : public testing::Test {
 protected:
    void note(const std::string& text) {
        notes += text + "@" +
                 std::to_string(std::chrono::floor<std::chrono::milliseconds>(thread.now()).count()) + " ";
    }

    SimulatedMainThread thread{PreciseDate{}};
    std::string notes;
};

TEST_F(SimulatedMainThreadTest, MovesOnlyTheWallClockInSleepAndWhenItIsSet) {
    const Task task = thread.after(1min, [&] { note("rang"); });
    thread.advance(59s);
    thread.sleepFor(8h);
    EXPECT_EQ(thread.now(), 59s);
    EXPECT_EQ(thread.date(), PreciseDate{} + 8h + 59s);
    thread.setDate(PreciseDate{} - 1h);
    thread.advance(999ms);
    EXPECT_EQ(notes, "");
    thread.advance(1ms);
    EXPECT_EQ(notes, "rang@60000 ");
    EXPECT_EQ(thread.date(), PreciseDate{} - 1h + 1s);
}

TEST_F(SimulatedMainThreadTest, DelaysWhatIsDueWhileItsWorkBlocksAndMakesOneOfMissedBeats) {
    const Task beat = thread.every(100ms, [&] { note("beat"); });
    const Task blocking = thread.after(150ms, [&] {
        note("block");
        thread.spend(280ms);
    });
    thread.advance(500ms);
    EXPECT_EQ(notes, "beat@100 block@150 beat@430 beat@500 ");
}

TEST_F(SimulatedMainThreadTest, CountsAWakeUpPerBurstAndNoneForTheMachinesOwnEvents) {
    const Task beat = thread.every(1s, [&] { thread.post([] {}); });
    thread.happen(1500ms, [&] { note("machine"); });
    thread.advance(3s);
    EXPECT_EQ(thread.wakeUps(), 3U);
    EXPECT_EQ(notes, "machine@1500 ");
    thread.happen(500ms, [&] { thread.post([] {}); });
    thread.advance(500ms);
    EXPECT_EQ(thread.wakeUps(), 4U);
}

}  // namespace
}  // namespace velko
