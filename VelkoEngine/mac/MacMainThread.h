#pragma once

#include <memory>

#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

/// The process's main thread, by way of the system's main queue, which also runs while menus track.
///
/// The queue does not run inside its own work: whoever starts a run loop of its own from there (a modal
/// alert, a menu that is tracked within the call) stops all other work until that loop ends.
class MacMainThread final : public MainThread {
 public:
    MacMainThread();
    ~MacMainThread() override;

    [[nodiscard]] bool isCurrent() const noexcept override;
    [[nodiscard]] Uptime now() const override;
    [[nodiscard]] PreciseDate date() const override;
    void post(Work work) override;
    [[nodiscard]] Task after(Uptime delay, Work work) override;
    [[nodiscard]] Task every(Uptime period, Work work) override;

 protected:
    [[nodiscard]] Task startBackground(Read read, Then then) override;

 private:
    class Core;

    std::shared_ptr<Core> core_;
};

/// The activities that the system knows of this process.
class MacActivity final : public Activity {
 public:
    [[nodiscard]] Subscription begin(const std::string& reason) override;
};

}  // namespace velko
