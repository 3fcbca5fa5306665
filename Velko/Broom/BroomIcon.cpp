#include "Velko/Broom/BroomIcon.h"

#include <chrono>
#include <cmath>
#include <initializer_list>
#include <numbers>
#include <utility>

#include "Velko/View/Drawing.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/Background/Awaited.h"

namespace velko::BroomDrawing {

namespace {

using view::closePath;
using view::curveTo;
using view::Drawing;
using view::Ink;
using view::lineTo;
using view::moveTo;
using view::Path;

constexpr double iconPoints = 18;
constexpr double leanAtRest = 34;  ///< degrees

/// Moves the broom to its place. In its own coordinates it stands upright around the origin.
struct Placing {
    double lean = 0;  ///< degrees, clockwise
    double scale = 1;
    Point centre{};

    [[nodiscard]] Point operator()(Point point) const {
        const double angle = lean * std::numbers::pi / 180;
        const double c = std::cos(angle) * scale;
        const double s = std::sin(angle) * scale;
        return {.x = centre.x + point.x * c - point.y * s, .y = centre.y + point.x * s + point.y * c};
    }
};

// The broom, upright: y grows downwards, from the end of the handle at -9.4 to the floor at 8.3.

constexpr double collarTop = -0.9;
constexpr double strawTop = 1.7;

Path handle() {
    return {moveTo({.x = 0, .y = -9.0}), lineTo({.x = 0, .y = collarTop})};
}

Path collar() {
    return {moveTo({.x = -1.7, .y = collarTop}),
            curveTo({.x = -0.9, .y = -1.3}, {.x = 0.9, .y = -1.3}, {.x = 1.7, .y = collarTop}),
            curveTo({.x = 2.4, .y = -0.5}, {.x = 2.75, .y = 0.1}, {.x = 2.95, .y = 0.9}),
            curveTo({.x = 1.2, .y = 1.15}, {.x = -1.2, .y = 1.15}, {.x = -2.95, .y = 0.9}),
            curveTo({.x = -2.75, .y = 0.1}, {.x = -2.4, .y = -0.5}, {.x = -1.7, .y = collarTop}),
            closePath()};
}

/// The straw from the collar to the floor: three bundles with slits between them. The slits are widest at the
/// floor. `slit` is half their width there.
Path straw(double slit) {
    const double left = -1.75;
    const double right = 1.75;
    return {moveTo({.x = -3.2, .y = strawTop}),
            curveTo({.x = -1.2, .y = 1.95}, {.x = 1.2, .y = 1.95}, {.x = 3.2, .y = strawTop}),
            curveTo({.x = 3.6, .y = 4.1}, {.x = 4.6, .y = 5.5}, {.x = 5.6, .y = 6.7}),
            curveTo({.x = 5.9, .y = 7.1}, {.x = 5.8, .y = 7.4}, {.x = 5.3, .y = 7.6}),
            curveTo({.x = 4.2, .y = 8.1}, {.x = 3.3, .y = 8.3}, {.x = right + slit, .y = 8.45}),
            lineTo({.x = 1.2, .y = 4.6}),
            lineTo({.x = right - slit, .y = 8.5}),
            curveTo({.x = 0.5, .y = 8.6}, {.x = -0.5, .y = 8.6}, {.x = left + slit, .y = 8.5}),
            lineTo({.x = -1.2, .y = 4.6}),
            lineTo({.x = left - slit, .y = 8.45}),
            curveTo({.x = -3.3, .y = 8.3}, {.x = -4.2, .y = 8.1}, {.x = -5.3, .y = 7.6}),
            curveTo({.x = -5.8, .y = 7.4}, {.x = -5.9, .y = 7.1}, {.x = -5.6, .y = 6.7}),
            curveTo({.x = -4.6, .y = 5.5}, {.x = -3.6, .y = 4.1}, {.x = -3.2, .y = strawTop}),
            closePath()};
}

/// The cord that ties the straw to the collar.
Path cord() {
    return {moveTo({.x = -3.0, .y = 1.3}),
            curveTo({.x = -1.2, .y = 1.55}, {.x = 1.2, .y = 1.55}, {.x = 3.0, .y = 1.3})};
}

/// One straw, from the collar to near the floor. `x` is where it ends.
Path strand(double x) {
    return {moveTo({.x = x * 0.5, .y = strawTop + 0.9}),
            curveTo({.x = x * 0.6, .y = 4.2}, {.x = x * 0.8, .y = 5.6}, {.x = x, .y = 7.1})};
}

// The screen stands where the broom leaves room. It has the icon's coordinates.

Path screen() {
    return {moveTo({.x = 12.3, .y = 11.8}), lineTo({.x = 17.6, .y = 11.8}), lineTo({.x = 17.6, .y = 15.6}),
            lineTo({.x = 12.3, .y = 15.6}), closePath()};
}

Path screenFoot() {
    return {moveTo({.x = 13.5, .y = 17.1}), lineTo({.x = 16.4, .y = 17.1})};
}

}  // namespace

Drawing icon(const Pose& pose) {
    const Placing placing{.lean = leanAtRest + pose.tilt, .scale = 0.94, .centre = {.x = 9.2, .y = 8.9}};
    Drawing drawing{.size = {.width = iconPoints, .height = iconPoints}};
    drawing.shapes.push_back({.path = view::moved(handle(), placing), .strokeWidth = 1.7});
    drawing.shapes.push_back({.path = view::moved(collar(), placing)});
    drawing.shapes.push_back({.path = view::moved(straw(0.5), placing)});
    if (pose.hasDot) {
        drawing.shapes.push_back({.path = view::circle({.x = 14.8, .y = 14.8}, 1.9)});
    }
    if (pose.isPresenting) {
        drawing.shapes.push_back({.path = screen()});
        drawing.shapes.push_back({.path = screenFoot(), .strokeWidth = 1.1});
    }
    return drawing;
}

Drawing coloured(double points) {
    const double scale = points / iconPoints;
    const Placing onto{.scale = scale};
    const Placing placing{.lean = leanAtRest, .scale = 0.94 * scale, .centre = onto({.x = 9.2, .y = 8.9})};
    Drawing drawing{.size = {.width = points, .height = points}};
    const auto fill = [&](const Path& path, const Placing& where, Ink ink) {
        drawing.shapes.push_back({.path = view::moved(path, where), .ink = ink});
    };
    const auto stroke = [&](const Path& path, double width, double opacity) {
        drawing.shapes.push_back({.path = view::moved(path, placing),
                                  .ink = Ink::wood,
                                  .strokeWidth = width * scale,
                                  .opacity = opacity});
    };
    stroke(handle(), 1.5, 1);
    fill(straw(0.2), placing, Ink::straw);
    for (const double x : {-4.4, -3.1, -0.7, 0.7, 3.1, 4.4}) {
        stroke(strand(x), 0.26, 0.55);
    }
    stroke(cord(), 0.9, 1);
    fill(collar(), placing, Ink::accent);
    fill(view::star({.x = 14.6, .y = 13.4}, 1.9), onto, Ink::sparkle);
    fill(view::star({.x = 12.4, .y = 16.3}, 0.9), onto, Ink::sparkle);
    fill(view::star({.x = 4.3, .y = 4.4}, 1.2), onto, Ink::sparkle);
    return drawing;
}

}  // namespace velko::BroomDrawing

namespace velko {

namespace {

constexpr std::chrono::milliseconds framePeriod{50};

/// How much of a movement is left: 1 at its start, 0 at its end. It moves as a spring that starts from rest,
/// swings past its goal by a fifth, and comes to rest.
double left(double progress) {
    constexpr double damping = 4.0;
    constexpr double turns = 8.303;  // radians; at the end the spring passes its goal for the third time
    return std::exp(-damping * progress) *
           (std::cos(turns * progress) + damping / turns * std::sin(turns * progress));
}

}  // namespace

BroomIcon::BroomIcon(StatusItem& item, const Surfaces& surfaces, const Platform& platform)
    : item_(item), surfaces_(surfaces), platform_(platform) {
    draw();
}

void BroomIcon::setMarks(bool hasDot, bool isPresenting) {
    const bool hadDot = std::exchange(pose_.hasDot, hasDot);
    const bool wasPresenting = std::exchange(pose_.isPresenting, isPresenting);
    // While the broom rocks, the next picture shows them.
    if ((hadDot != hasDot || wasPresenting != isPresenting) && !animation_.isPending()) {
        draw();
    }
}

void BroomIcon::lean(bool over) {
    const Rock rock{
        .start = platform_.mainThread.now(), .from = pose_.tilt, .to = over ? Timing::broomRockDegrees : 0};
    animation_.cancel();
    if (rock.from != rock.to && !surfaces_.reducesMotion()) {
        animation_ = Awaited::every(platform_, "the broom", framePeriod, [this, rock] { swing(rock); });
    } else {
        pose_.tilt = rock.to;
        draw();  // also the marks, which the pictures to come were to show
    }
}

void BroomIcon::swing(Rock rock) {
    const double progress =
        Timing::Seconds(platform_.mainThread.now() - rock.start) / Timing::broomRockDuration;
    if (progress < 1) {
        pose_.tilt = rock.to + (rock.from - rock.to) * left(progress);
    } else {
        animation_.cancel();
        pose_.tilt = rock.to;
    }
    draw();
}

void BroomIcon::draw() {
    view::Drawing drawing = BroomDrawing::icon(pose_);
    if (drawing != drawn_) {
        item_.setImage(drawing);
        drawn_ = std::move(drawing);
    }
}

}  // namespace velko
