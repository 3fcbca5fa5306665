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

/// One element of an Accessibility tree. It exists as long as it is in its tree. After that, its handles
/// answer `invalidElement`.
struct SimulatedElement {
    ProcessID pid = 0;              ///< the process that answers for it
    SimulatedAnswers attributes{};  ///< what the machine says; the machine updates them
    SimulatedAnswers overrides{};   ///< what this element says instead; the machine does not change them
    std::map<std::string, std::function<void()>> actions{};  ///< what it can do
    MainThread::Uptime delay{0};                             ///< how much longer than usual each answer takes
};

/// A handle of an element in a simulated tree, as the port gives it out. It has a messaging time-out of its
/// own.
class SimulatedAXHandle final : public AXElement::Native {
 public:
    /// The time-out of a handle on which none was set.
    static constexpr MainThread::Uptime defaultTimeout = std::chrono::seconds(6);

    /// An application's element is looked up at each question, because a handle can be made for any process.
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
    /// The time-out that was set, or zero.
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
