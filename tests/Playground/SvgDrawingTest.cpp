#include <gtest/gtest.h>

#include "Playground/Html/SvgDrawing.h"

namespace velko::playground {
namespace {

TEST(SvgDrawing, DrawsEachShapeInItsInkWithoutExponentsOrEndlessFractions) {
    using Kind = view::PathCommand::Kind;
    const view::Drawing drawing{.size = {.width = 18, .height = 9},
                                .shapes = {{.path = {{.kind = Kind::moveTo, .to = {.x = 1.0 / 3, .y = -1e-9}},
                                                     {.kind = Kind::curveTo,
                                                      .to = {.x = 5, .y = 6},
                                                      .control1 = {.x = 1, .y = 2},
                                                      .control2 = {.x = 3, .y = 4}},
                                                     {.kind = Kind::close}},
                                            .ink = view::Ink::straw,
                                            .opacity = 0.5},
                                           {.path = {{.kind = Kind::moveTo, .to = {}},
                                                     {.kind = Kind::lineTo, .to = {.x = 7, .y = 8}}},
                                            .ink = view::Ink::wood,
                                            .strokeWidth = 1.5}}};
    EXPECT_EQ(svg(drawing, 2),
              R"(<svg xmlns="http://www.w3.org/2000/svg" width="36" height="18" viewBox="0 0 18 9")"
              R"( aria-hidden="true"><path class="ink-straw" fill="currentColor" opacity="0.5")"
              R"( d="M0.333 0C1 2 3 4 5 6Z"/><path class="ink-wood" fill="none")"
              R"( stroke="currentColor" stroke-linecap="round" stroke-linejoin="round" stroke-width="1.5")"
              R"( d="M0 0L7 8"/></svg>)");
}

}  // namespace
}  // namespace velko::playground
