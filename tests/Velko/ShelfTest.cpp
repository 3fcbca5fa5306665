#include "Simulator/Desktop/SimulatedScreen.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;
using By = ShelfDismissal;

class ShelfTest : public VelkoOnMac {
 protected:
    ShelfTest() : VelkoOnMac({.displays = {SimulatedDisplays::notched()}}) {
        layout.reveal.autoTuckSeconds = 0;
        launch("com.example.tucked", Section::tucked);
        start();
        velko->toggle();
        pass(1s);
    }
};

TEST_F(ShelfTest, IsNotOpenedAgainByTheClickThatClosedIt) {
    EXPECT_TRUE(values().isShelfShown());
    velko->closeShelf(By::click);
    pass(390ms);
    EXPECT_FALSE(values().isShelfShown());
    EXPECT_TRUE(velko->consumesClick());
    EXPECT_FALSE(velko->consumesClick()) << "one click";
    velko->toggle();
    EXPECT_TRUE(values().isShelfShown());
    velko->closeShelf(By::click);
    velko->toggle();
    EXPECT_FALSE(values().isShelfShown()) << "nor by a toggle from elsewhere";
    velko->toggle();
    velko->closeShelf(By::click);
    pass(400ms);
    velko->toggle();
    EXPECT_TRUE(values().isShelfShown());
}

TEST_F(ShelfTest, OpensAgainAtOnceAfterEscape) {
    velko->closeShelf(By::escape);
    EXPECT_FALSE(values().isShelfShown());
    EXPECT_FALSE(velko->consumesClick());
    velko->toggle();
    EXPECT_TRUE(values().isShelfShown());
}

TEST_F(ShelfTest, StaysWhileAnAppPeeks) {
    velko->handle(RevealEvent::peek("com.example.tucked"));
    pass(1s);
    velko->closeShelf(By::click);
    EXPECT_TRUE(values().isShelfShown());
    EXPECT_FALSE(velko->consumesClick());
    velko->handle(RevealEvent::peekEnded());
    velko->closeShelf(By::click);
    EXPECT_FALSE(values().isShelfShown());
}

}  // namespace
}  // namespace velko
