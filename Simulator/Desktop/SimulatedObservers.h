#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// The observers of one kind of event. Each is told on the main thread, and never inside the call that tells
/// them. An observer that registers after an event, or leaves before the event is delivered, does not hear of
/// it.
template <class Event>
class SimulatedObservers final {
 public:
    using Handler = std::function<void(const Event&)>;

    explicit SimulatedObservers(MainThread& mainThread) : mainThread_(mainThread) {}

    [[nodiscard]] Subscription observe(Handler handler) {
        const int id = nextID_++;
        handlers_->emplace(id, std::move(handler));
        return Subscription([weak = std::weak_ptr(handlers_), id] {
            if (const auto handlers = weak.lock()) {
                // The handler's captures are destroyed last, because they may end another subscription.
                const auto ended = handlers->extract(id);
            }
        });
    }

    [[nodiscard]] std::size_t count() const { return handlers_->size(); }

    void tell(const Event& event) {
        for (const auto& [id, handler] : *handlers_) {
            mainThread_.post(
                [weak = std::weak_ptr(handlers_), observer = id, event] { deliver(weak, observer, event); });
        }
    }

 private:
    using Handlers = std::map<int, Handler>;

    static void deliver(const std::weak_ptr<Handlers>& weak, int observer, const Event& event) {
        const auto handlers = weak.lock();
        if (!handlers) {
            return;
        }
        const auto found = handlers->find(observer);
        if (found == handlers->end()) {
            return;
        }
        const Handler handler = found->second;  // it may end its own subscription
        handler(event);
    }

    MainThread& mainThread_;
    int nextID_ = 0;
    std::shared_ptr<Handlers> handlers_ = std::make_shared<Handlers>();
};

}  // namespace velko
