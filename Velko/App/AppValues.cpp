#include "Velko/App/AppValues.h"

#include <ranges>
#include <utility>
#include <vector>

namespace velko {

Subscription ChangeNotices::observe(std::function<void()> handler) {
    const int id = nextID_++;
    handlers_->emplace(id, std::move(handler));
    return Subscription([weak = std::weak_ptr(handlers_), id] {
        if (const auto handlers = weak.lock()) {
            // What the handler holds is let go last: it may be another subscription.
            const auto ended = handlers->extract(id);
        }
    });
}

void ChangeNotices::note() {
    if (!pending_.isPending()) {
        pending_ = mainThread_.after(MainThread::Uptime::zero(), [this] { tell(); });
    }
}

void ChangeNotices::tell() {
    const auto handlers = handlers_;  // a handler may destroy this
    const auto ids = std::views::keys(*handlers);
    for (const int id : std::vector<int>(ids.begin(), ids.end())) {
        if (const auto found = handlers->find(id); found != handlers->end()) {
            const auto handler = found->second;  // it may end its own subscription
            handler();
        }
    }
}

}  // namespace velko
