#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>

#include "Velko/Setup/Intro.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

TEST(Intro, StandsStillForAsLongAsItSays) {
    for (const bool reduced : {false, true}) {
        Intro::Moment moment{.reducedMotion = reduced};
        int pictures = 1;
        while (const auto wait = Intro::untilChange(moment)) {
            const Intro::Moment before{.time = moment.time + Timing::Seconds(*wait) / 2,
                                       .reducedMotion = reduced};
            const bool isFrame = *wait < 40ms;
            EXPECT_TRUE(isFrame || Intro::at(before) == Intro::at(moment))
                << "moves unseen at " << moment.time.count();
            moment.time += *wait;
            ++pictures;
        }
        const view::Drawing last = Intro::at(moment);
        for (const Timing::Seconds later : {Timing::Seconds(0.1), Timing::Seconds(1), Timing::Seconds(60)}) {
            EXPECT_EQ(Intro::at({.time = moment.time + later, .reducedMotion = reduced}), last);
        }
        EXPECT_GT(moment.time, reduced ? Timing::reducedMotionFade : Timing::Seconds(Timing::sudsFirstPop));
        EXPECT_LT(moment.time, reduced ? 200ms : 30s);
        EXPECT_LT(pictures, reduced ? 10 : 500);
    }
}

TEST(Intro, FadesInWhereMotionIsUnwelcome) {
    const view::Drawing end = Intro::at({.time = 1s, .reducedMotion = true});
    view::Drawing start = Intro::at({.time = 0s, .reducedMotion = true});
    EXPECT_TRUE(
        std::ranges::all_of(start.shapes, [](const view::Shape& shape) { return shape.opacity == 0; }));
    ASSERT_EQ(start.shapes.size(), end.shapes.size());
    for (std::size_t index = 0; index < end.shapes.size(); ++index) {
        EXPECT_EQ(start.shapes[index].path, end.shapes[index].path) << "nothing moves";
    }
}

}  // namespace
}  // namespace velko
