#include "Velko/Setup/Intro.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <iterator>
#include <numbers>
#include <utility>
#include <vector>

#include "Velko/Broom/BroomIcon.h"
#include "Velko/Ports/Surfaces.h"
#include "Velko/View/Drawing.h"
#include "VelkoEngine/Background/Awaited.h"

namespace velko::Intro {

namespace {

using view::Drawing;
using view::Ink;
using view::Shape;

constexpr Timing::Duration frame{33};
constexpr Size canvas{.width = 440, .height = 180};
constexpr double broomPoints = 124;
constexpr double unit = broomPoints / 18;  // the broom is drawn 18 units wide
constexpr Point broomAtRest{.x = (canvas.width - broomPoints) / 2, .y = 40};
constexpr Timing::Seconds sweepIn{0.8};
constexpr Timing::Seconds blink{0.12};
constexpr Timing::Seconds hop{0.32};
constexpr double hopHeight = 22;
constexpr double wipeWidth = 70;

/// How much of something has passed that begins at `from` and takes `length`: 0 to 1.
double progress(Timing::Seconds time, Timing::Seconds from, Timing::Seconds length) {
    return std::clamp((time - from) / length, 0.0, 1.0);
}

/// Goes from 0 up to 1 and down to 0 again.
double arch(double part) {
    return std::sin(part * std::numbers::pi);
}

/// A soap bubble, and the second at which it pops.
struct Bubble {
    Point centre;
    double radius = 0;
    Timing::Seconds popsAt{};
};

std::vector<Bubble> bubbles() {
    constexpr std::array<std::pair<Point, double>, 10> places{{{{.x = 62, .y = 58}, 17},
                                                               {{.x = 382, .y = 44}, 21},
                                                               {{.x = 116, .y = 122}, 12},
                                                               {{.x = 334, .y = 108}, 14},
                                                               {{.x = 28, .y = 120}, 9},
                                                               {{.x = 410, .y = 118}, 11},
                                                               {{.x = 128, .y = 30}, 8},
                                                               {{.x = 306, .y = 26}, 10},
                                                               {{.x = 84, .y = 158}, 7},
                                                               {{.x = 366, .y = 156}, 8}}};
    std::vector<Bubble> result;
    Timing::Seconds popsAt = Timing::sudsFirstPop;
    double part = 0;
    for (const auto& [centre, radius] : places) {
        result.push_back({.centre = centre, .radius = radius, .popsAt = popsAt});
        part = std::fmod(part + std::numbers::phi, 1.0);  // spreads the times evenly, and looks random
        popsAt += Timing::Seconds(
            std::lerp(Timing::sudsPopEvery.lowest.count(), Timing::sudsPopEvery.highest.count(), part));
    }
    return result;
}

/// How far the wipe has come, from left to right.
double wipedTo(Timing::Seconds time) {
    const double part = progress(time, Timing::introWipeDelay, Timing::introWipe);
    return part * (canvas.width + wipeWidth);
}

void addBubble(Drawing& drawing, const Bubble& bubble, double popped) {
    const double radius = bubble.radius * (1 + 0.4 * popped);
    const double opacity = 1 - popped;
    drawing.shapes.push_back({.path = view::circle(bubble.centre, radius),
                              .ink = Ink::soap,
                              .strokeWidth = 1.6 * (1 - 0.7 * popped),
                              .opacity = 0.9 * opacity});
    const Point shine{.x = bubble.centre.x - radius * 0.35, .y = bubble.centre.y - radius * 0.35};
    drawing.shapes.push_back(
        {.path = view::circle(shine, bubble.radius * 0.18 * opacity), .ink = Ink::soap, .opacity = opacity});
}

void addSuds(Drawing& drawing, Timing::Seconds time) {
    for (const Bubble& bubble : bubbles()) {
        const double popped = progress(time, bubble.popsAt, Timing::bubblePop);
        if (wipedTo(time) > bubble.centre.x + wipeWidth && popped < 1) {
            addBubble(drawing, bubble, popped);
        }
    }
}

void addWipe(Drawing& drawing, Timing::Seconds time) {
    const double front = wipedTo(time);
    if (front <= 0 || front >= canvas.width + wipeWidth) {
        return;
    }
    const double back = front - wipeWidth;
    const double lean = 24;
    const auto inside = [](double x) { return std::clamp(x, 0.0, canvas.width); };
    drawing.shapes.push_back(
        {.path = {view::moveTo({.x = inside(back + lean), .y = 0}),
                  view::lineTo({.x = inside(front + lean), .y = 0}),
                  view::lineTo({.x = inside(front), .y = canvas.height}),
                  view::lineTo({.x = inside(back), .y = canvas.height}), view::closePath()},
         .ink = Ink::soap,
         .opacity = 0.35});
}

/// How the broom differs from its drawing at rest: its place and its tilt.
struct Pose {
    Point offset = broomAtRest;
    double tilt = 0;  ///< degrees, around the straw
    double sparkle = 1;
    bool eyesClosed = false;
};

Pose poseAt(Timing::Seconds time) {
    Pose pose;
    const double left = 1 - progress(time, Timing::Seconds::zero(), sweepIn);
    pose.offset.x -= left * left * left * (broomAtRest.x + broomPoints);
    const double swish = progress(time, Timing::introSwishAt, Timing::broomRockDuration);
    pose.tilt = Timing::broomRockDegrees * std::sin(swish * 4 * std::numbers::pi) * (1 - swish);
    const double wiping = progress(time, Timing::introWipeDelay, Timing::introWipe);
    pose.tilt += Timing::broomRockDegrees * std::sin(wiping * 2 * std::numbers::pi);
    pose.offset.y -= hopHeight * arch(progress(time, Timing::introHopAt, hop));
    pose.sparkle = progress(time, Timing::introSparkleAt, Timing::introSparkle);
    pose.eyesClosed = time >= Timing::introBlinkAt && time < Timing::introBlinkAt + blink;
    return pose;
}

std::vector<Shape> eyes(bool closed) {
    std::vector<Shape> shapes;
    for (const Point eye : {Point{.x = 6.45, .y = 11.13}, Point{.x = 8.17, .y = 12.28}}) {
        const Point centre{.x = eye.x * unit, .y = eye.y * unit};
        if (closed) {
            const double half = 0.45 * unit;
            shapes.push_back({.path = {view::moveTo({.x = centre.x - half, .y = centre.y}),
                                       view::lineTo({.x = centre.x + half, .y = centre.y})},
                              .strokeWidth = 2});
        } else {
            shapes.push_back({.path = view::circle(centre, 0.42 * unit)});
        }
    }
    return shapes;
}

/// The place of one of the broom's points in a pose.
Point posed(Point point, const Pose& pose) {
    const Point pivot{.x = 6 * unit, .y = 14 * unit};  // where the straw stands on the floor
    const double angle = pose.tilt * std::numbers::pi / 180;
    const double x = point.x - pivot.x;
    const double y = point.y - pivot.y;
    return {.x = pivot.x + x * std::cos(angle) - y * std::sin(angle) + pose.offset.x,
            .y = pivot.y + x * std::sin(angle) + y * std::cos(angle) + pose.offset.y};
}

void addBroom(Drawing& drawing, const Pose& pose) {
    std::vector<Shape> shapes = BroomDrawing::coloured(broomPoints).shapes;
    std::ranges::move(eyes(pose.eyesClosed), std::back_inserter(shapes));
    for (Shape& shape : shapes) {
        shape.path = view::moved(std::move(shape.path), [&](Point point) { return posed(point, pose); });
        if (shape.ink == Ink::sparkle) {
            shape.opacity *= pose.sparkle;
        }
        drawing.shapes.push_back(std::move(shape));
    }
}

}  // namespace

Drawing at(const Moment& moment) {
    Drawing drawing{.size = canvas};
    if (moment.reducedMotion) {
        addSuds(drawing, Timing::sudsFirstPop);
        addBroom(drawing, {});
        const double opacity = progress(moment.time, Timing::Seconds::zero(), Timing::reducedMotionFade);
        for (Shape& shape : drawing.shapes) {
            shape.opacity *= opacity;
        }
        return drawing;
    }
    addSuds(drawing, moment.time);
    addBroom(drawing, poseAt(moment.time));
    addWipe(drawing, moment.time);
    return drawing;
}

Drawing still() {
    return at({.time = Timing::reducedMotionFade, .reducedMotion = true});
}

std::optional<Timing::Duration> untilChange(const Moment& moment) {
    const Timing::Seconds wiped = Timing::introWipeDelay + Timing::introWipe;
    const Timing::Seconds stillAt = moment.reducedMotion ? Timing::reducedMotionFade : wiped;
    if (moment.time < stillAt) {
        return frame;
    }
    if (moment.reducedMotion) {
        return std::nullopt;
    }
    for (const Bubble& bubble : bubbles()) {
        if (moment.time < bubble.popsAt) {
            return std::max(frame, std::chrono::ceil<Timing::Duration>(bubble.popsAt - moment.time));
        }
        if (moment.time < bubble.popsAt + Timing::bubblePop) {
            return frame;
        }
    }
    return std::nullopt;
}

}  // namespace velko::Intro

namespace velko {

IntroPlayer::IntroPlayer(const FaceParts& parts, std::function<void()> changed)
    : platform_(parts.platform), surfaces_(parts.ports.surfaces), changed_(std::move(changed)) {}

void IntroPlayer::play() {
    began_ = platform_.mainThread.now();
    reducedMotion_ = surfaces_.reducesMotion();
    waitForChange();
}

view::Drawing IntroPlayer::picture() const {
    return Intro::at({.time = platform_.mainThread.now() - began_, .reducedMotion = reducedMotion_});
}

void IntroPlayer::waitForChange() {
    const auto wait =
        Intro::untilChange({.time = platform_.mainThread.now() - began_, .reducedMotion = reducedMotion_});
    if (!wait) {
        beat_.cancel();
        return;
    }
    beat_ = Awaited::after(platform_, "the introduction", *wait, [this] {
        waitForChange();
        changed_();
    });
}

}  // namespace velko
