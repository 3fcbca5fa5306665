#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Simulator/Accessibility/SimulatedAXObservers.h"
#include "Simulator/Accessibility/SimulatedElement.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "VelkoEngine/Ports/Accessibility.h"

namespace velko {

/// Trees of elements, one for each process. Answers take time on the machine's clock.
///
/// A messaging time-out belongs to one handle. A handle without one waits for six seconds, as on a Mac, so
/// that tests notice a forgotten time-out. The port's reads may be made on any thread. A lock is held while
/// an answer is made, and not while its time passes. Only the main thread changes what the reads see, under
/// `hold`.
class SimulatedAccessibility final : public Accessibility {
 public:
    /// How long one message to a healthy app takes.
    static constexpr MainThread::Uptime messageCost = std::chrono::microseconds(100);

    SimulatedAccessibility(MachineThread& mainThread, bool trusted);

    [[nodiscard]] bool isTrusted() const override { return saidToBeTrusted_; }
    void promptForTrust() override { ++prompts_; }
    /// A time-out of zero means the default one, as on a Mac.
    [[nodiscard]] AXElement application(ProcessID pid, Uptime messagingTimeout) const override;
    [[nodiscard]] std::expected<AXValue, AXError> attribute(const AXElement& element,
                                                            const std::string& name) const override;
    [[nodiscard]] std::expected<std::vector<AXAnswer>, AXError> attributes(
        const AXElement& element, const std::vector<std::string>& names) const override;
    [[nodiscard]] std::expected<std::vector<std::string>, AXError> attributeNames(
        const AXElement& element) const override;
    /// Known without asking the process.
    [[nodiscard]] std::expected<ProcessID, AXError> pid(const AXElement& element) const override;
    [[nodiscard]] std::expected<AXElement, AXError> elementAt(Point point,
                                                              Uptime messagingTimeout) const override;
    /// An app that takes longer than the time-out still performs the action. One that hangs does not.
    [[nodiscard]] std::expected<void, AXError> perform(const AXElement& element,
                                                       const std::string& action) override;
    [[nodiscard]] std::unique_ptr<AXObserver> observe(ProcessID pid, Uptime messagingTimeout,
                                                      NotificationHandler handler) override;

    /// Whether the user really allows Velko to read. The system acts by this.
    [[nodiscard]] bool isPermitted() const {
        const auto lock = hold();
        return isPermitted_;
    }
    /// When the permission was taken last.
    [[nodiscard]] std::optional<Uptime> takenAt() const {
        const auto lock = hold();
        return takenAt_;
    }
    /// The user gives the permission or takes it away. With `isTold` the system says so when it is asked.
    /// Otherwise it still says what it said before, as it does for an app that was replaced by another build.
    void setTrusted(bool trusted, bool isTold = true);

    /// How often the user was asked for the permission.
    [[nodiscard]] int prompts() const noexcept { return prompts_; }

    /// How many messages were sent to processes, with or without an answer.
    [[nodiscard]] std::uint64_t messages() const;

    /// Says which process this program is.
    void setOwn(ProcessID pid);
    /// How often this program's own elements were asked on another thread than the main one.
    [[nodiscard]] std::uint64_t ownAnswersElsewhere() const;

    /// Gives a process its application element.
    SimulatedElementRef addApplication(ProcessID pid, const std::string& name);
    void removeApplication(ProcessID pid);
    /// A process's application element; null when it has none.
    [[nodiscard]] SimulatedElementRef root(ProcessID pid) const;

    /// Something has happened to an element. Observers of it or of its application hear of it.
    void notify(const SimulatedElementRef& element, const std::string& notification);
    /// The observers that are installed.
    [[nodiscard]] std::size_t observers() const { return observers_.count(); }

    /// Stops other threads from reading while elements are changed.
    [[nodiscard]] std::unique_lock<std::mutex> hold() const { return std::unique_lock(mutex_); }
    /// The elements on the screen, with their frames. At all other points there is none.
    using OnScreen = std::vector<std::pair<Rect, SimulatedElementRef>>;
    void setOnScreen(OnScreen elements);

    /// A hung process answers no message: each message takes its handle's whole time-out.
    void setHung(ProcessID pid, bool hung);
    [[nodiscard]] bool isHung(ProcessID pid) const;
    /// Whether a process answers somebody who waits so many seconds. One without elements holds up nobody.
    [[nodiscard]] bool answersWithin(ProcessID pid, Uptime time) const;
    /// How much longer than usual each answer of a process takes.
    void setDelay(ProcessID pid, MainThread::Uptime delay);
    /// How much longer each answer of every process takes, in addition to that.
    void setLoad(MainThread::Uptime delay);

 private:
    struct Process {
        SimulatedElementRef root;
        bool hung = false;
        MainThread::Uptime delay{0};
    };

    /// What a message reached, or the error that the sender gets instead of an answer, and how long that
    /// takes.
    struct Reached {
        SimulatedElementRef element;
        std::optional<AXError> error;
        MainThread::Uptime wait{0};
    };

    [[nodiscard]] Reached reach(const SimulatedAXHandle& handle) const;
    template <class Answer>
    [[nodiscard]] auto ask(const SimulatedAXHandle& handle, Answer answer) const;

    MachineThread& mainThread_;
    mutable std::mutex mutex_;
    bool isPermitted_;
    bool saidToBeTrusted_;
    std::optional<Uptime> takenAt_;
    int prompts_ = 0;
    std::map<ProcessID, Process> processes_;
    OnScreen onScreen_;
    ProcessID own_ = 0;
    MainThread::Uptime load_{0};
    mutable std::uint64_t messages_ = 0;
    mutable std::uint64_t ownAnswersElsewhere_ = 0;
    SimulatedAXObservers observers_;
};

}  // namespace velko
