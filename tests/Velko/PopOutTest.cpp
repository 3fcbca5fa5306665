#include "Velko/Flows/Preferences.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

class PopOutTest : public VelkoOnMac {
 protected:
    void SetUp() override {
        app = launch("com.example.tucked", Section::tucked);
        other = launch("com.example.other", Section::tucked);
        buried = launch("com.example.buried", Section::buried);
    }

    void change(ProcessID pid, const std::string& title) {
        mac.changeIcon(pid, 0, [&](SimulatedIcon& icon) { icon.title = title; });
    }

    ProcessID app = 0;
    ProcessID other = 0;
    ProcessID buried = 0;
};

TEST_F(PopOutTest, LetsAChangedTuckedIconOutForTenSeconds) {
    start();
    change(app, "1 new message");
    change(buried, "1 new message");
    pass(3s);
    EXPECT_TRUE(shows("com.example.tucked"));
    EXPECT_FALSE(shows("com.example.other"));
    EXPECT_FALSE(shows("com.example.buried"));
    EXPECT_TRUE(logged("[popout] com.example.tucked changed: out for 10.0 seconds"));
    EXPECT_TRUE(logged("[engine] applied (pop out com.example.tucked) in "));
    pass(10s);
    EXPECT_FALSE(shows("com.example.tucked"));
    EXPECT_TRUE(logged("[popout] pop out over com.example.tucked"));
    change(app, "2 new messages");
    pass(5s);
    EXPECT_FALSE(shows("com.example.tucked")) << "not again within five minutes";
    pass(5min);
    change(app, "3 new messages");
    pass(3s);
    EXPECT_TRUE(shows("com.example.tucked"));
    velko->place("com.example.tucked", Section::buried);
    pass(1s);
    EXPECT_FALSE(shows("com.example.tucked")) << "what the user says counts at once";
}

TEST_F(PopOutTest, EndsAtOnceWhenSwitchedOffAndBeginsAnewWhenSwitchedOn) {
    start();
    change(app, "1 new message");
    change(other, "1 new message");
    pass(2500ms);
    EXPECT_EQ(values().poppedOut.size(), 2U);
    velko->preferences().setSwitch(Switch::popOutOnChange, false);
    pass(1s);
    EXPECT_FALSE(shows("com.example.tucked"));
    EXPECT_TRUE(values().poppedOut.empty());
    EXPECT_TRUE(logged("[engine] applied (pop out off) in "));
    pass(6min);
    EXPECT_FALSE(logged("pop out over"));
    change(app, "2 new messages");
    velko->preferences().setSwitch(Switch::popOutOnChange, true);
    pass(5s);
    EXPECT_FALSE(shows("com.example.tucked")) << "what changed meanwhile is not news";
    change(app, "3 new messages");
    pass(3s);
    EXPECT_TRUE(shows("com.example.tucked"));
}

TEST_F(PopOutTest, LeavesAloneWhatWaitsForAnAnswer) {
    layout.hasCompletedSetup = true;
    start();
    const ProcessID newcomer = launch("com.example.new");
    pass(3s);
    change(newcomer, "Hello");
    pass(5s);
    EXPECT_FALSE(shows("com.example.new"));
    velko->place("com.example.new", Section::tucked);
    pass(3s);
    change(newcomer, "Hello again");
    pass(3s);
    EXPECT_TRUE(shows("com.example.new"));
}

}  // namespace
}  // namespace velko
