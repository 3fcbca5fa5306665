#include "Simulator/Accessibility/SimulatedAXObservers.h"

#include <algorithm>

namespace velko {

struct SimulatedAXObservers::State {
    ProcessID pid = 0;
    Uptime timeout{};
    Accessibility::NotificationHandler handler;
    std::vector<std::pair<std::weak_ptr<SimulatedElement>, std::string>> wanted;

    [[nodiscard]] bool wants(const SimulatedElementRef& element, const std::string& notification) const {
        return std::ranges::any_of(wanted, [&](const auto& each) {
            return each.first.lock() == element && each.second == notification;
        });
    }
};

class SimulatedAXObservers::Observer final : public AXObserver {
 public:
    Observer(std::shared_ptr<State> state, Reach reach)
        : state_(std::move(state)), reach_(std::move(reach)) {}

    [[nodiscard]] std::expected<void, AXError> add(const AXElement& element,
                                                   const std::string& notification) override {
        if (SimulatedAXHandle::of(element).pid() != state_->pid) {
            return std::unexpected(AXError::illegalArgument);
        }
        const auto reached = reach_(element);
        if (!reached) {
            return std::unexpected(reached.error());
        }
        if (state_->wants(*reached, notification)) {
            return std::unexpected(AXError::notificationAlreadyRegistered);
        }
        state_->wanted.emplace_back(*reached, notification);
        return {};
    }

 private:
    std::shared_ptr<State> state_;
    Reach reach_;
};

std::unique_ptr<AXObserver> SimulatedAXObservers::observe(ProcessID pid, Uptime messagingTimeout,
                                                          Accessibility::NotificationHandler handler) {
    std::erase_if(states_, [](const auto& state) { return state.expired(); });
    auto state = std::make_shared<State>(
        State{.pid = pid, .timeout = messagingTimeout, .handler = std::move(handler), .wanted = {}});
    states_.push_back(state);
    return std::make_unique<Observer>(std::move(state), reach_);
}

void SimulatedAXObservers::notify(const SimulatedElementRef& root, const SimulatedElementRef& element,
                                  const std::string& notification) {
    for (const auto& weak : states_) {
        const auto state = weak.lock();
        if (!state || (!state->wants(element, notification) && !state->wants(root, notification))) {
            continue;
        }
        mainThread_.post([weak, notification, about = SimulatedAXHandle::make(element, state->timeout)] {
            if (const auto listening = weak.lock()) {
                listening->handler(notification, about);
            }
        });
    }
}

std::size_t SimulatedAXObservers::count() const {
    return static_cast<std::size_t>(
        std::ranges::count_if(states_, [](const auto& state) { return !state.expired(); }));
}

}  // namespace velko
