#pragma once

#include <functional>

#include "Velko/App/FaceParts.h"
#include "Velko/View/Drawing.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// Plays the introduction, once; wakes only when the picture changes. Main thread.
class IntroPlayer final : private NonCopyable {
 public:
    /// `changed` is called whenever there is another picture.
    IntroPlayer(const FaceParts& parts, std::function<void()> changed);

    /// From the beginning.
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
