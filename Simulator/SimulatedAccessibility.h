#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "Simulator/SimulatedAXHandle.h"
#include "Simulator/SimulatedAXObservers.h"
#include "Simulator/SimulatedElement.h"
#include "Simulator/SimulatedMainThread.h"
#include "VelkoEngine/Ports/Accessibility.h"

namespace velko {

/// Trees of elements, one per process, that answer messages in virtual time.
///
/// A messaging time-out belongs to one handle. A handle on which none was set waits for six seconds, as
/// on a Mac, so that a forgotten time-out shows. Main thread and background reads only.
class SimulatedAccessibility final : public Accessibility {
 public:
    /// What one message to a healthy app costs.
    static constexpr MainThread::Uptime messageCost = std::chrono::microseconds(100);

    SimulatedAccessibility(SimulatedMainThread& mainThread, bool trusted);

    [[nodiscard]] bool isTrusted() const override { return trusted_; }
    void promptForTrust() override { ++prompts_; }
    /// A time-out of zero leaves the default one, as the system has it.
    [[nodiscard]] AXElement application(ProcessID pid, float messagingTimeout) const override;
    [[nodiscard]] std::expected<AXValue, AXError> attribute(const AXElement& element,
                                                            const std::string& name) const override;
    [[nodiscard]] std::expected<std::vector<std::string>, AXError> attributeNames(
        const AXElement& element) const override;
    /// Known without asking the process.
    [[nodiscard]] std::expected<ProcessID, AXError> pid(const AXElement& element) const override;
    [[nodiscard]] std::expected<AXElement, AXError> elementAt(Point point,
                                                              float messagingTimeout) const override;
    /// An app that takes longer than the time-out acts all the same; one that hangs does not.
    [[nodiscard]] std::expected<void, AXError> perform(const AXElement& element,
                                                       const std::string& action) override;
    [[nodiscard]] std::unique_ptr<AXObserver> observe(ProcessID pid, float messagingTimeout,
                                                      NotificationHandler handler) override;

    void setTrusted(bool trusted) noexcept { trusted_ = trusted; }

    /// How often the user was asked for the permission.
    [[nodiscard]] int prompts() const noexcept { return prompts_; }

    /// Messages that processes were sent, answered or not.
    [[nodiscard]] std::uint64_t messages() const noexcept { return messages_; }

    /// Gives a process its application element.
    SimulatedElementRef addApplication(ProcessID pid, const std::string& name);
    void removeApplication(ProcessID pid);
    /// A process's application element; null when it has none.
    [[nodiscard]] SimulatedElementRef root(ProcessID pid) const;

    /// Something has happened to an element; whoever observes it or its application hears of it.
    void notify(const SimulatedElementRef& element, const std::string& notification);
    /// The observers that are installed.
    [[nodiscard]] std::size_t observers() const { return observers_.count(); }
    /// What lies under a point; null where no element does.
    std::function<SimulatedElementRef(Point)> elementUnder;

    /// A hung process answers no message: each costs its handle's whole time-out.
    void setHung(ProcessID pid, bool hung);
    /// How much longer than usual a process takes over every answer.
    void setDelay(ProcessID pid, MainThread::Uptime delay);

 private:
    struct Process {
        SimulatedElementRef root;
        bool hung = false;
        MainThread::Uptime delay{0};
    };

    [[nodiscard]] std::expected<SimulatedElementRef, AXError> reach(const SimulatedAXHandle& handle) const;
    [[nodiscard]] bool awaitAnswer(const SimulatedAXHandle& handle, const SimulatedElement& element) const;
    [[nodiscard]] std::expected<SimulatedElementRef, AXError> ask(const SimulatedAXHandle& handle) const;

    SimulatedMainThread& mainThread_;
    bool trusted_;
    int prompts_ = 0;
    std::map<ProcessID, Process> processes_;
    mutable std::uint64_t messages_ = 0;
    SimulatedAXObservers observers_;
};

}  // namespace velko
