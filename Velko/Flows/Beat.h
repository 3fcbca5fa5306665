#pragma once

#include <functional>
#include <vector>

#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

struct WorkspaceNotice;

/// The one timer of everything that Velko does again and again. A battery pays for each time that the machine
/// wakes, so what is due at about the same time runs at the same time, nothing runs that has nothing to look
/// at, and all of it rests while nobody is at the Mac. Main thread; owned by the flows.
class Beat final : private NonCopyable {
 public:
    using Uptime = MainThread::Uptime;

    /// Something that is done every `period` from the start on, while there is work.
    struct Loop {
        Uptime period{};
        Uptime early{};  ///< how much sooner it may run, together with another loop
        Uptime late{};   ///< how much later, while no other loop wakes the machine
        std::function<bool()> hasWork;
        std::function<void()> run;
        std::function<void()> rest{};  ///< there is no work any more; may be empty
    };

    explicit Beat(const Platform& platform);

    /// Adds a loop that begins with `start`. What its functions use outlives this object.
    void add(Loop loop);

    /// Begins. To be called once.
    void start();

    /// Something has changed that decides whether a loop has work.
    void reconsider();

    /// The user does something, so the Mac is in use, whatever the system has said of its displays.
    void userIsThere();

 private:
    struct Member {
        Loop loop;
        Uptime due{};
        bool isAtWork = false;
    };

    void hear(const WorkspaceNotice& notice);
    void setAway(bool screensAsleep, bool sessionElsewhere);
    [[nodiscard]] bool isAway() const noexcept { return screensAsleep_ || sessionElsewhere_; }
    [[nodiscard]] Uptime nextTurn(const Loop& loop) const;
    void beat();
    void arm();

    MainThread& mainThread_;
    std::vector<Member> members_;
    bool hasStarted_ = false;
    Uptime origin_{};  ///< when it began
    bool isBeating_ = false;
    bool screensAsleep_ = false;
    bool sessionElsewhere_ = false;
    Uptime armedFor_{};
    Task timer_;
    Subscription notices_;
};

}  // namespace velko
