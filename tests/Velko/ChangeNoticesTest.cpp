#include "tests/Velko/VelkoOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

class ChangeNoticesTest : public VelkoOnMac {
 protected:
    void SetUp() override {
        launch("com.example.tucked", Section::tucked);
        launch("com.example.buried", Section::buried);
        start();
        pass(10s);
    }
};

TEST_F(ChangeNoticesTest, ComeOncePerTurnAndOnlyForChanges) {
    int notices = 0;
    const auto observer = velko->observe([&] { ++notices; });
    velko->toggle();
    velko->place("com.example.tucked", Section::buried);
    velko->toggle();
    EXPECT_EQ(notices, 0) << "never within the change";
    pass(1ms);
    EXPECT_EQ(notices, 1);
    pass(1s);
    notices = 0;
    velko->place("com.example.tucked", Section::buried);
    velko->handle(RevealEvent::autoTuck());
    velko->apply({.reason = "again"});
    pass(100ms);
    EXPECT_EQ(notices, 0);
}

TEST_F(ChangeNoticesTest, ReachAnObserverThatChangesSomethingAndOneThatLeaves) {
    int notices = 0;
    Subscription first;
    first = velko->observe([&] {
        first.end();
        velko->place("com.example.tucked", Section::bar);
    });
    const auto second = velko->observe([&] { ++notices; });
    velko->toggle();
    pass(1ms);
    EXPECT_EQ(notices, 2) << "of the click and of the placement";
}

TEST_F(ChangeNoticesTest, CountWhatIsTidiedAwayOnceTheEngineHasAnswered) {
    EXPECT_EQ(values().tidiedCount, 2U);
    std::vector<std::size_t> counts;
    velko->onChange = [&] { counts.push_back(values().tidiedCount); };
    velko->toggle();
    EXPECT_EQ(values().tidiedCount, 2U);
    pass(1s);
    velko->apply({.reason = "again"});
    velko->toggle();
    pass(1s);
    velko->showAll();
    EXPECT_EQ(counts, (std::vector<std::size_t>{1, 1, 2, 0})) << "skipped applies are answered too";
}

}  // namespace
}  // namespace velko
