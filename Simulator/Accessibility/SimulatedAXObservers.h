#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Simulator/Accessibility/SimulatedElement.h"
#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

/// The installed observers of elements, and what each of them asked for.
class SimulatedAXObservers final {
 public:
    /// Sends the message of a registration. Returns the element that it reaches.
    using Reach = std::function<std::expected<SimulatedElementRef, AXError>(const AXElement&)>;

    SimulatedAXObservers(MainThread& mainThread, Reach reach)
        : mainThread_(mainThread), reach_(std::move(reach)) {}

    [[nodiscard]] std::unique_ptr<AXObserver> observe(ProcessID pid, Uptime messagingTimeout,
                                                      Accessibility::NotificationHandler handler);

    /// Tells the observers that asked for it, on the main thread and never within this call. `root` is the
    /// application's element of the same process.
    void notify(const SimulatedElementRef& root, const SimulatedElementRef& element,
                const std::string& notification);

    [[nodiscard]] std::size_t count() const;

 private:
    class Observer;
    struct State;

    MainThread& mainThread_;
    Reach reach_;
    std::vector<std::weak_ptr<State>> states_;
};

}  // namespace velko
