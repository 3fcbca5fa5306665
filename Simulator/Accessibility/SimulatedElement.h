#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "VelkoCore/Geometry.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

struct SimulatedElement;
using SimulatedElementRef = std::shared_ptr<SimulatedElement>;

/// What an element answers when it is asked for an attribute: an error or a value.
using SimulatedAnswer = std::variant<AXError, AXOther, bool, double, std::string, Point, Size,
                                     SimulatedElementRef, std::vector<SimulatedElementRef>>;
using SimulatedAnswers = std::map<std::string, SimulatedAnswer>;

/// One element of an Accessibility tree. It exists for as long as its tree holds it; a handle of one that
/// is gone answers `invalidElement`.
struct SimulatedElement {
    ProcessID pid = 0;              ///< the process that answers for it
    SimulatedAnswers attributes{};  ///< what the machine says; it keeps them up to date
    SimulatedAnswers overrides{};   ///< what this element says instead; the machine leaves them alone
    std::map<std::string, std::function<void()>> actions{};  ///< what it can do
    MainThread::Uptime delay{0};  ///< how much longer than usual it takes over each answer
};

/// What a port hands out for an element of a simulated tree, with the time-out of whoever asks through it.
class SimulatedAXHandle final : public AXElement::Native {
 public:
    /// The time-out of a handle on which none was set.
    static constexpr MainThread::Uptime defaultTimeout = std::chrono::seconds(6);

    /// An application's element is looked up when it is asked, for it can be made for any process.
    SimulatedAXHandle(ProcessID pid, std::optional<std::weak_ptr<SimulatedElement>> element, Uptime timeout)
        : pid_(pid), element_(std::move(element)), timeout_(timeout) {}

    [[nodiscard]] static AXElement make(const SimulatedElementRef& element, Uptime timeout) {
        return AXElement(std::make_shared<const SimulatedAXHandle>(element->pid, element, timeout));
    }
    [[nodiscard]] static const SimulatedAXHandle& of(const AXElement& element) {
        return static_cast<const SimulatedAXHandle&>(element.native());
    }

    [[nodiscard]] ProcessID pid() const noexcept { return pid_; }
    /// Nothing for an application's element.
    [[nodiscard]] const std::optional<std::weak_ptr<SimulatedElement>>& element() const noexcept {
        return element_;
    }
    /// As it was set; zero when it was not.
    [[nodiscard]] Uptime setTimeout() const noexcept { return timeout_; }
    [[nodiscard]] Uptime timeout() const noexcept {
        return timeout_ > Uptime::zero() ? timeout_ : defaultTimeout;
    }

 private:
    ProcessID pid_;
    std::optional<std::weak_ptr<SimulatedElement>> element_;
    Uptime timeout_;
};

}  // namespace velko
