#pragma once

#include <memory>

#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

/// The process's main thread, by way of the system's main queue, which also runs while menus track.
///
/// Work on the queue never runs inside other work. A modal alert or a menu that runs a loop of its own there
/// stops all other work until that loop ends.
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
