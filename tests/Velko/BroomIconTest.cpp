#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <utility>
#include <variant>

#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Machine/SimulatedMac.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/Broom/BroomIcon.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/Ports/Platform.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

class BroomIconTest : public testing::Test {
 protected:
    [[nodiscard]] const view::Drawing& drawn() const {
        return std::get<view::Drawing>(mac.statusItem.image());
    }
    void expectAtRest(double tilt, bool hasDot = false) {
        EXPECT_EQ(drawn(), BroomDrawing::icon({.tilt = tilt, .hasDot = hasDot}));
        EXPECT_EQ(mac.registered().work, idle) << "no timer runs when nothing moves";
    }
    void expectWithinItsSquare() const {
        for (const view::Shape& shape : drawn().shapes) {
            for (const view::PathCommand& command : shape.path) {
                EXPECT_GE(std::min(command.to.x, command.to.y), shape.strokeWidth / 2);
                EXPECT_LE(std::max(command.to.x, command.to.y), 18 - shape.strokeWidth / 2);
            }
        }
    }

    SimulatedMac mac;
    std::size_t idle = mac.registered().work;
    BroomIcon broom{mac.statusItem, mac.surfaces, mac.platform()};
};

TEST_F(BroomIconTest, RocksOverAndBackWithoutAJumpAndComesToRest) {
    broom.setMarks(true, false);
    const auto endOfHandle = [](const view::Drawing& drawing) { return drawing.shapes[0].path[0].to; };
    Point last = endOfHandle(drawn());
    double farthest = 0;
    // The second pair turns back half-way.
    for (const auto& [over, duration] :
         {std::pair{true, 800ms}, {false, 800ms}, {true, 200ms}, {false, 800ms}}) {
        broom.lean(over);
        for (auto passed = 0ms; passed < duration; passed += 5ms) {
            mac.advance(5ms);
            const Point now = endOfHandle(drawn());
            EXPECT_LT(std::hypot(now.x - last.x, now.y - last.y), 1.6);
            farthest = std::max(farthest, now.x);
            last = now;
            expectWithinItsSquare();
        }
    }
    EXPECT_GT(farthest, endOfHandle(BroomDrawing::icon({.tilt = Timing::broomRockDegrees})).x + 0.1);
    expectAtRest(0, true);
    const auto revision = mac.statusItem.revision();
    EXPECT_LE(revision, 54U) << "at most twenty pictures a second";
    EXPECT_TRUE(mac.activity.reasons().empty());
    broom.lean(false);
    broom.setMarks(true, false);
    mac.advance(1s);
    EXPECT_EQ(mac.statusItem.revision(), revision) << "nothing is drawn twice";
    broom.lean(true);
    broom.setMarks(false, false);
    broom.lean(false);
    expectAtRest(0, false);
}

TEST_F(BroomIconTest, LeansAtOnceWhereLessMotionIsWanted) {
    mac.surfaces.reducedMotion = true;
    broom.lean(true);
    expectAtRest(Timing::broomRockDegrees);
    broom.lean(false);
    expectAtRest(0);
}

}  // namespace
}  // namespace velko
