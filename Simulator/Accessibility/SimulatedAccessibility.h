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

/// Trees of elements, one per process, that answer messages in the machine's time.
///
/// A messaging time-out belongs to one handle. A handle on which none was set waits for six seconds, as
/// on a Mac, so that a forgotten time-out shows. The port's reads may be made on any thread: a lock is
/// held while a message is looked into, not while its answer is on the way. Only the main thread changes
/// what they read, under `hold`.
class SimulatedAccessibility final : public Accessibility {
 public:
    /// What one message to a healthy app costs.
    static constexpr MainThread::Uptime messageCost = std::chrono::microseconds(100);

    SimulatedAccessibility(MachineThread& mainThread, bool trusted);

    [[nodiscard]] bool isTrusted() const override { return saidToBeTrusted_; }
    void promptForTrust() override { ++prompts_; }
    /// A time-out of zero leaves the default one, as the system has it.
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
    /// An app that takes longer than the time-out acts all the same; one that hangs does not.
    [[nodiscard]] std::expected<void, AXError> perform(const AXElement& element,
                                                       const std::string& action) override;
    [[nodiscard]] std::unique_ptr<AXObserver> observe(ProcessID pid, Uptime messagingTimeout,
                                                      NotificationHandler handler) override;

    /// Whether the user lets Velko read, which is what the system obeys.
    [[nodiscard]] bool isPermitted() const {
        const auto lock = hold();
        return isPermitted_;
    }
    /// The user gives the permission or takes it. `isTold`: the system says so when it is asked; else it
    /// goes on saying what it said, as it does of an app that was replaced by another build.
    void setTrusted(bool trusted, bool isTold = true);

    /// How often the user was asked for the permission.
    [[nodiscard]] int prompts() const noexcept { return prompts_; }

    /// Messages that processes were sent, answered or not.
    [[nodiscard]] std::uint64_t messages() const;

    /// Says which process this program is.
    void setOwn(ProcessID pid);
    /// How often this program was made to answer for its own elements on another thread than its main one.
    [[nodiscard]] std::uint64_t ownAnswersElsewhere() const;

    /// Gives a process its application element.
    SimulatedElementRef addApplication(ProcessID pid, const std::string& name);
    void removeApplication(ProcessID pid);
    /// A process's application element; null when it has none.
    [[nodiscard]] SimulatedElementRef root(ProcessID pid) const;

    /// Something has happened to an element; whoever observes it or its application hears of it.
    void notify(const SimulatedElementRef& element, const std::string& notification);
    /// The observers that are installed.
    [[nodiscard]] std::size_t observers() const { return observers_.count(); }

    /// Keeps other threads from reading while elements of the trees are changed.
    [[nodiscard]] std::unique_lock<std::mutex> hold() const { return std::unique_lock(mutex_); }
    /// The elements that show on the screen, and where; at any other point lies none.
    using OnScreen = std::vector<std::pair<Rect, SimulatedElementRef>>;
    void setOnScreen(OnScreen elements);

    /// A hung process answers no message: each costs its handle's whole time-out.
    void setHung(ProcessID pid, bool hung);
    [[nodiscard]] bool isHung(ProcessID pid) const;
    /// Whether a process answers somebody who waits so many seconds. One without elements holds up nobody.
    [[nodiscard]] bool answersWithin(ProcessID pid, Uptime time) const;
    /// How much longer than usual a process takes over every answer.
    void setDelay(ProcessID pid, MainThread::Uptime delay);
    /// How much longer every process takes, besides.
    void setLoad(MainThread::Uptime delay);

 private:
    struct Process {
        SimulatedElementRef root;
        bool hung = false;
        MainThread::Uptime delay{0};
    };

    /// Where a message got to, what whoever sent it hears instead of an answer, and after which time.
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
