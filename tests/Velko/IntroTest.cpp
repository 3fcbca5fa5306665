#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>

#include "Velko/Setup/Intro.h"

namespace velko {
namespace {

double seconds(Timing::Duration duration) {
    return std::chrono::duration<double>(duration).count();
}

TEST(Intro, StandsStillForAsLongAsItSays) {
    for (const bool reduced : {false, true}) {
        Intro::Moment moment{.reducedMotion = reduced};
        int pictures = 1;
        while (const auto wait = Intro::untilChange(moment)) {
            const Intro::Moment before{.seconds = moment.seconds + seconds(*wait) / 2,
                                       .reducedMotion = reduced};
            const bool isFrame = seconds(*wait) < 0.04;
            EXPECT_TRUE(isFrame || Intro::at(before) == Intro::at(moment))
                << "moves unseen at " << moment.seconds;
            moment.seconds += seconds(*wait);
            ++pictures;
        }
        const view::Drawing last = Intro::at(moment);
        for (const double later : {0.1, 1.0, 60.0}) {
            EXPECT_EQ(Intro::at({.seconds = moment.seconds + later, .reducedMotion = reduced}), last);
        }
        EXPECT_GT(moment.seconds, reduced ? Timing::reducedMotionFade : seconds(Timing::sudsFirstPop));
        EXPECT_LT(moment.seconds, reduced ? 0.2 : 30);
        EXPECT_LT(pictures, reduced ? 10 : 500);
    }
}

TEST(Intro, FadesInWhereMotionIsUnwelcome) {
    const view::Drawing end = Intro::at({.seconds = 1, .reducedMotion = true});
    view::Drawing start = Intro::at({.seconds = 0, .reducedMotion = true});
    EXPECT_TRUE(
        std::ranges::all_of(start.shapes, [](const view::Shape& shape) { return shape.opacity == 0; }));
    ASSERT_EQ(start.shapes.size(), end.shapes.size());
    for (std::size_t index = 0; index < end.shapes.size(); ++index) {
        EXPECT_EQ(start.shapes[index].path, end.shapes[index].path) << "nothing moves";
    }
}

}  // namespace
}  // namespace velko
