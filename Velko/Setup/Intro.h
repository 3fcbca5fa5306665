#pragma once

#include <functional>
#include <optional>

#include "Velko/App/FaceParts.h"
#include "Velko/View/Drawing.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Task.h"

/// The animation in which the broom introduces itself: it sweeps in, swishes, sparkles, blinks, hops and
/// wipes the picture. The wipe leaves soap bubbles, which pop one after another. Pure functions of time.
namespace velko::Intro {

struct Moment {
    Timing::Seconds time{};  ///< since the introduction began
    bool reducedMotion = false;
};

/// The picture at a moment. With less motion the broom fades in among its bubbles, and stays.
[[nodiscard]] view::Drawing at(const Moment& moment);

/// The last picture with less motion: the broom among its bubbles.
[[nodiscard]] view::Drawing still();

/// How long it takes until the picture changes; nothing if it does not change any more.
[[nodiscard]] std::optional<Timing::Duration> untilChange(const Moment& moment);

}  // namespace velko::Intro

namespace velko {

/// Plays the introduction once. Its timer runs only when the picture changes. Main thread.
class IntroPlayer final : private NonCopyable {
 public:
    /// Calls `changed` whenever there is another picture.
    IntroPlayer(const FaceParts& parts, std::function<void()> changed);

    /// Starts from the beginning.
    void play();
    void stop() noexcept { beat_.cancel(); }
    [[nodiscard]] view::Drawing picture() const;

 private:
    void waitForChange();

    Platform platform_;
    const Surfaces& surfaces_;
    std::function<void()> changed_;
    MainThread::Uptime began_{};
    bool reducedMotion_ = false;
    Task beat_;
};

}  // namespace velko
