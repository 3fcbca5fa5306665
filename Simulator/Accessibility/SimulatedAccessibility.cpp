#include "Simulator/Accessibility/SimulatedAccessibility.h"

#include <algorithm>
#include <set>
#include <type_traits>
#include <utility>

namespace velko {

namespace {

/// A value as the port gives it out. The system sets no time-out on handles, so the port sets the asker's
/// time-out on each.
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

std::expected<AXValue, AXError> valueOf(const SimulatedElement& element, const std::string& name,
                                        Uptime timeout) {
    for (const auto* answers : {&element.overrides, &element.attributes}) {
        if (const auto found = answers->find(name); found != answers->end()) {
            return handOut(found->second, [timeout](const SimulatedElementRef& reached) {
                return SimulatedAXHandle::make(reached, timeout);
            });
        }
    }
    return std::unexpected(AXError::attributeUnsupported);
}

std::vector<std::string> namesOf(const SimulatedElement& element) {
    std::set<std::string> names;
    for (const auto& [name, answer] : element.attributes) {
        names.insert(name);
    }
    for (const auto& [name, answer] : element.overrides) {
        const auto* error = std::get_if<AXError>(&answer);
        if (error != nullptr && *error == AXError::attributeUnsupported) {
            names.erase(name);
        } else {
            names.insert(name);
        }
    }
    return {names.begin(), names.end()};
}

}  // namespace

/// Sends one message. `answer` makes the answer of the element that it reaches, which is an `std::expected`.
template <class Answer>
auto SimulatedAccessibility::ask(const SimulatedAXHandle& handle, Answer answer) const {
    using Result = std::invoke_result_t<Answer&, const SimulatedElementRef&>;
    MainThread::Uptime wait{0};
    Result result = std::unexpected(AXError::failure);
    {
        const auto lock = hold();
        const auto reached = reach(handle);
        wait = reached.wait;
        result = reached.error ? Result(std::unexpected(*reached.error)) : answer(reached.element);
    }
    mainThread_.spend(wait);
    return result;
}

SimulatedAccessibility::SimulatedAccessibility(MachineThread& mainThread, bool trusted)
    : mainThread_(mainThread),
      isPermitted_(trusted),
      saidToBeTrusted_(trusted),
      observers_(mainThread, [this](const AXElement& element) {
          return ask(SimulatedAXHandle::of(element), [](const SimulatedElementRef& reached) {
              return std::expected<SimulatedElementRef, AXError>(reached);
          });
      }) {}

AXElement SimulatedAccessibility::application(ProcessID pid, Uptime messagingTimeout) const {
    return AXElement(std::make_shared<const SimulatedAXHandle>(pid, std::nullopt, messagingTimeout));
}

std::expected<AXValue, AXError> SimulatedAccessibility::attribute(const AXElement& element,
                                                                  const std::string& name) const {
    const auto& handle = SimulatedAXHandle::of(element);
    return ask(handle,
               [&](const SimulatedElementRef& asked) { return valueOf(*asked, name, handle.setTimeout()); });
}

std::expected<std::vector<AXAnswer>, AXError> SimulatedAccessibility::attributes(
    const AXElement& element, const std::vector<std::string>& names) const {
    const auto& handle = SimulatedAXHandle::of(element);
    return ask(handle, [&](const SimulatedElementRef& asked) {
        std::vector<AXAnswer> answers;
        answers.reserve(names.size());
        for (const std::string& name : names) {
            answers.push_back(valueOf(*asked, name, handle.setTimeout()));
        }
        return std::expected<std::vector<AXAnswer>, AXError>(std::move(answers));
    });
}

std::expected<std::vector<std::string>, AXError> SimulatedAccessibility::attributeNames(
    const AXElement& element) const {
    return ask(SimulatedAXHandle::of(element), [](const SimulatedElementRef& asked) {
        return std::expected<std::vector<std::string>, AXError>(namesOf(*asked));
    });
}

std::expected<ProcessID, AXError> SimulatedAccessibility::pid(const AXElement& element) const {
    return SimulatedAXHandle::of(element).pid();
}

std::expected<AXElement, AXError> SimulatedAccessibility::elementAt(Point point,
                                                                    Uptime messagingTimeout) const {
    std::optional<AXElement> found;
    {
        const auto lock = hold();
        if (!isPermitted_) {
            return std::unexpected(AXError::apiDisabled);
        }
        const auto under =
            std::ranges::find_if(onScreen_, [point](const auto& each) { return each.first.contains(point); });
        if (under != onScreen_.end()) {
            found = SimulatedAXHandle::make(under->second, messagingTimeout);
        } else {
            ++messages_;
        }
    }
    if (!found) {
        mainThread_.spend(messageCost);
        return std::unexpected(AXError::noValue);
    }
    return ask(SimulatedAXHandle::of(*found),
               [&found](const SimulatedElementRef&) { return std::expected<AXElement, AXError>(*found); });
}

std::expected<void, AXError> SimulatedAccessibility::perform(const AXElement& element,
                                                             const std::string& action) {
    Reached reached;
    {
        const auto lock = hold();
        reached = reach(SimulatedAXHandle::of(element));
    }
    bool isAble = false;
    if (reached.element) {
        const auto found = reached.element->actions.find(action);
        isAble = found != reached.element->actions.end();
        if (isAble) {
            found->second();
        }
    }
    mainThread_.spend(reached.wait);
    if (reached.error) {
        return std::unexpected(*reached.error);
    }
    if (!isAble) {
        return std::unexpected(AXError::actionUnsupported);
    }
    return {};
}

std::unique_ptr<AXObserver> SimulatedAccessibility::observe(ProcessID pid, Uptime messagingTimeout,
                                                            NotificationHandler handler) {
    return observers_.observe(pid, messagingTimeout, std::move(handler));
}

void SimulatedAccessibility::notify(const SimulatedElementRef& element, const std::string& notification) {
    if (const auto application = root(element->pid)) {
        observers_.notify(application, element, notification);
    }
}

/// Finds the element that a message reaches, under the lock. If the answer comes too late for the asker, the
/// message has still reached its element. A message to a hung process reaches nothing.
SimulatedAccessibility::Reached SimulatedAccessibility::reach(const SimulatedAXHandle& handle) const {
    if (!isPermitted_) {
        return {.element = nullptr, .error = AXError::apiDisabled};
    }
    ++messages_;
    const auto process = processes_.find(handle.pid());
    SimulatedElementRef element;
    if (process != processes_.end()) {
        const auto& reached = handle.element();
        element = reached ? reached->lock() : process->second.root;
    }
    if (!element) {
        return {.element = nullptr, .error = AXError::invalidElement, .wait = messageCost};
    }
    if (handle.pid() == own_ && !mainThread_.isCurrent()) {
        ++ownAnswersElsewhere_;
    }
    if (process->second.hung) {
        return {.element = nullptr, .error = AXError::cannotComplete, .wait = handle.timeout()};
    }
    const auto load = handle.pid() == own_ ? MainThread::Uptime{0} : load_;
    const auto wait = messageCost + load + process->second.delay + element->delay;
    if (wait > handle.timeout()) {
        return {.element = element, .error = AXError::cannotComplete, .wait = handle.timeout()};
    }
    return {.element = element, .error = std::nullopt, .wait = wait};
}

SimulatedElementRef SimulatedAccessibility::addApplication(ProcessID pid, const std::string& name) {
    auto element = std::make_shared<SimulatedElement>();
    element->pid = pid;
    element->attributes = {
        {"AXRole", "AXApplication"}, {"AXTitle", name}, {"AXChildren", std::vector<SimulatedElementRef>{}}};
    const auto lock = hold();
    processes_[pid].root = element;
    return element;
}

void SimulatedAccessibility::removeApplication(ProcessID pid) {
    const auto lock = hold();
    processes_.erase(pid);
}

SimulatedElementRef SimulatedAccessibility::root(ProcessID pid) const {
    const auto found = processes_.find(pid);
    return found == processes_.end() ? nullptr : found->second.root;
}

void SimulatedAccessibility::setOnScreen(OnScreen elements) {
    const auto lock = hold();
    onScreen_ = std::move(elements);
}

void SimulatedAccessibility::setTrusted(bool trusted, bool isTold) {
    const auto lock = hold();
    if (std::exchange(isPermitted_, trusted) && !trusted) {
        takenAt_ = mainThread_.now();
    }
    saidToBeTrusted_ = isTold ? trusted : saidToBeTrusted_;
}

void SimulatedAccessibility::setOwn(ProcessID pid) {
    const auto lock = hold();
    own_ = pid;
}

std::uint64_t SimulatedAccessibility::ownAnswersElsewhere() const {
    const auto lock = hold();
    return ownAnswersElsewhere_;
}

std::uint64_t SimulatedAccessibility::messages() const {
    const auto lock = hold();
    return messages_;
}

void SimulatedAccessibility::setHung(ProcessID pid, bool hung) {
    const auto lock = hold();
    if (const auto found = processes_.find(pid); found != processes_.end()) {
        found->second.hung = hung;
    }
}

bool SimulatedAccessibility::isHung(ProcessID pid) const {
    const auto lock = hold();
    const auto found = processes_.find(pid);
    return found != processes_.end() && found->second.hung;
}

bool SimulatedAccessibility::answersWithin(ProcessID pid, Uptime time) const {
    const auto lock = hold();
    const auto found = processes_.find(pid);
    return found == processes_.end() ||
           (!found->second.hung && messageCost + load_ + found->second.delay <= time);
}

void SimulatedAccessibility::setDelay(ProcessID pid, MainThread::Uptime delay) {
    const auto lock = hold();
    if (const auto found = processes_.find(pid); found != processes_.end()) {
        found->second.delay = delay;
    }
}

void SimulatedAccessibility::setLoad(MainThread::Uptime delay) {
    const auto lock = hold();
    load_ = delay;
}

}  // namespace velko
