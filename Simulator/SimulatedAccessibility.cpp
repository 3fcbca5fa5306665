#include "Simulator/SimulatedAccessibility.h"

#include <algorithm>
#include <set>
#include <type_traits>
#include <utility>

namespace velko {

namespace {

/// A value as it goes to whoever asked. The system's own handles have no time-out set; a port sets the
/// asker's on each.
template <class MakeElement>
std::expected<AXValue, AXError> handOut(const SimulatedAnswer& answer, MakeElement makeElement) {
    return std::visit(
        [&](const auto& value) -> std::expected<AXValue, AXError> {
            using Value = std::decay_t<decltype(value)>;
            if constexpr (std::is_same_v<Value, AXError>) {
                return std::unexpected(value);
            } else if constexpr (std::is_same_v<Value, SimulatedElementRef>) {
                return makeElement(value);
            } else if constexpr (std::is_same_v<Value, std::vector<SimulatedElementRef>>) {
                std::vector<AXElement> elements;
                elements.reserve(value.size());
                for (const auto& element : value) {
                    elements.push_back(makeElement(element));
                }
                return elements;
            } else {
                return value;
            }
        },
        answer);
}

}  // namespace

SimulatedAccessibility::SimulatedAccessibility(SimulatedMainThread& mainThread, bool trusted)
    : mainThread_(mainThread), trusted_(trusted), observers_(mainThread, [this](const AXElement& element) {
          return ask(SimulatedAXHandle::of(element));
      }) {}

AXElement SimulatedAccessibility::application(ProcessID pid, float messagingTimeout) const {
    return AXElement(std::make_shared<const SimulatedAXHandle>(pid, std::nullopt, messagingTimeout));
}

std::expected<AXValue, AXError> SimulatedAccessibility::attribute(const AXElement& element,
                                                                  const std::string& name) const {
    const auto& handle = SimulatedAXHandle::of(element);
    const auto asked = ask(handle);
    if (!asked) {
        return std::unexpected(asked.error());
    }
    for (const auto* answers : {&(*asked)->overrides, &(*asked)->attributes}) {
        if (const auto found = answers->find(name); found != answers->end()) {
            return handOut(found->second, [&handle](const SimulatedElementRef& reached) {
                return SimulatedAXHandle::make(reached, handle.timeoutSeconds());
            });
        }
    }
    return std::unexpected(AXError::attributeUnsupported);
}

std::expected<std::vector<std::string>, AXError> SimulatedAccessibility::attributeNames(
    const AXElement& element) const {
    const auto asked = ask(SimulatedAXHandle::of(element));
    if (!asked) {
        return std::unexpected(asked.error());
    }
    std::set<std::string> names;
    for (const auto& [name, answer] : (*asked)->attributes) {
        names.insert(name);
    }
    for (const auto& [name, answer] : (*asked)->overrides) {
        const auto* error = std::get_if<AXError>(&answer);
        if (error != nullptr && *error == AXError::attributeUnsupported) {
            names.erase(name);
        } else {
            names.insert(name);
        }
    }
    return std::vector(names.begin(), names.end());
}

std::expected<ProcessID, AXError> SimulatedAccessibility::pid(const AXElement& element) const {
    return SimulatedAXHandle::of(element).pid();
}

std::expected<AXElement, AXError> SimulatedAccessibility::elementAt(Point point,
                                                                    float messagingTimeout) const {
    if (!trusted_) {
        return std::unexpected(AXError::apiDisabled);
    }
    const auto found = elementUnder ? elementUnder(point) : nullptr;
    if (!found) {
        ++messages_;
        mainThread_.spend(messageCost);
        return std::unexpected(AXError::noValue);
    }
    auto element = SimulatedAXHandle::make(found, messagingTimeout);
    const auto asked = ask(SimulatedAXHandle::of(element));
    if (!asked) {
        return std::unexpected(asked.error());
    }
    return element;
}

std::expected<void, AXError> SimulatedAccessibility::perform(const AXElement& element,
                                                             const std::string& action) {
    const auto& handle = SimulatedAXHandle::of(element);
    const auto reached = reach(handle);
    if (!reached) {
        return std::unexpected(reached.error());
    }
    const auto found = (*reached)->actions.find(action);
    const bool isAble = found != (*reached)->actions.end();
    if (isAble) {
        found->second();
    }
    if (!awaitAnswer(handle, **reached)) {
        return std::unexpected(AXError::cannotComplete);
    }
    if (!isAble) {
        return std::unexpected(AXError::actionUnsupported);
    }
    return {};
}

std::unique_ptr<AXObserver> SimulatedAccessibility::observe(ProcessID pid, float messagingTimeout,
                                                            NotificationHandler handler) {
    return observers_.observe(pid, messagingTimeout, std::move(handler));
}

void SimulatedAccessibility::notify(const SimulatedElementRef& element, const std::string& notification) {
    if (const auto application = root(element->pid)) {
        observers_.notify(application, element, notification);
    }
}

/// Gets a message to whoever answers for an element.
std::expected<SimulatedElementRef, AXError> SimulatedAccessibility::reach(
    const SimulatedAXHandle& handle) const {
    if (!trusted_) {
        return std::unexpected(AXError::apiDisabled);
    }
    ++messages_;
    const auto process = processes_.find(handle.pid());
    SimulatedElementRef element;
    if (process != processes_.end()) {
        const auto& reached = handle.element();
        element = reached ? reached->lock() : process->second.root;
    }
    if (!element) {
        mainThread_.spend(messageCost);
        return std::unexpected(AXError::invalidElement);
    }
    if (process->second.hung) {
        mainThread_.spend(handle.timeout());
        return std::unexpected(AXError::cannotComplete);
    }
    return element;
}

/// Waits for the answer to a message that has got through; whether it comes within the time-out.
bool SimulatedAccessibility::awaitAnswer(const SimulatedAXHandle& handle,
                                         const SimulatedElement& element) const {
    const auto process = processes_.find(handle.pid());
    const auto delay = process == processes_.end() ? MainThread::Uptime{0} : process->second.delay;
    const auto wait = messageCost + delay + element.delay;
    mainThread_.spend(std::min(wait, handle.timeout()));
    return wait <= handle.timeout();
}

std::expected<SimulatedElementRef, AXError> SimulatedAccessibility::ask(
    const SimulatedAXHandle& handle) const {
    auto element = reach(handle);
    if (element && !awaitAnswer(handle, **element)) {
        return std::unexpected(AXError::cannotComplete);
    }
    return element;
}

SimulatedElementRef SimulatedAccessibility::addApplication(ProcessID pid, const std::string& name) {
    auto element = std::make_shared<SimulatedElement>();
    element->pid = pid;
    element->attributes = {
        {"AXRole", "AXApplication"}, {"AXTitle", name}, {"AXChildren", std::vector<SimulatedElementRef>{}}};
    processes_[pid].root = element;
    return element;
}

void SimulatedAccessibility::removeApplication(ProcessID pid) {
    processes_.erase(pid);
}

SimulatedElementRef SimulatedAccessibility::root(ProcessID pid) const {
    const auto found = processes_.find(pid);
    return found == processes_.end() ? nullptr : found->second.root;
}

void SimulatedAccessibility::setHung(ProcessID pid, bool hung) {
    if (const auto found = processes_.find(pid); found != processes_.end()) {
        found->second.hung = hung;
    }
}

void SimulatedAccessibility::setDelay(ProcessID pid, MainThread::Uptime delay) {
    if (const auto found = processes_.find(pid); found != processes_.end()) {
        found->second.delay = delay;
    }
}

}  // namespace velko
