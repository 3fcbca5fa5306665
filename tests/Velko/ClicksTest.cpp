#include "Simulator/Time/SimulatedMainThread.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

class ClicksTest : public VelkoOnMac {
 protected:
    void SetUp() override { app = launch("com.example.bar", Section::bar); }

    ProcessID app = 0;
};

TEST_F(ClicksTest, AreWrittenFiveSecondsAfterTheLastOfABurst) {
    start();
    pass(10s);
    ASSERT_TRUE(mac.clickIcon(app));
    pass(4s);
    const Date last = floorToSeconds(mac.mainThread.date());
    ASSERT_TRUE(mac.clickIcon(app));
    pass(4900ms);
    EXPECT_TRUE(saved().lastClicked.empty());
    pass(1s);
    EXPECT_EQ(saved().lastClicked.at("com.example.bar"), last);
    EXPECT_EQ(saved().clickDays.at("com.example.bar").size(), 1U);
}

TEST_F(ClicksTest, AreWrittenWhenVelkoQuitsBeforeThat) {
    start();
    pass(10s);
    mac.clickIcon(app);
    pass(1s);
    velko->quit();
    EXPECT_TRUE(saved().lastClicked.contains("com.example.bar"));
    mac.advance(1min);
    EXPECT_EQ(mac.registered(), SimulatedMac::Registered{}) << "nothing of Velko's goes on";
}

TEST_F(ClicksTest, LeaveALayoutThatCannotBeReadAlone) {
    write("broken");
    startWithFileAsItIs();
    mac.clickIcon(app);
    pass(10s);
    EXPECT_EQ(contentOf(file()), "broken");
    velko->quit();
    EXPECT_EQ(contentOf(file()), "broken");
}

}  // namespace
}  // namespace velko
