#pragma once

#include <functional>
#include <map>
#include <memory>

#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// Tells observers that something has changed: once per turn of the main thread, however much it was, and
/// never within the change itself. Main thread.
class ChangeNotices final {
 public:
    explicit ChangeNotices(MainThread& mainThread) : mainThread_(mainThread) {}

    /// `handler` is called until the subscription ends. It may end subscriptions, change values and destroy
    /// this.
    [[nodiscard]] Subscription observe(std::function<void()> handler);

    /// Something has changed.
    void note();

 private:
    using Handlers = std::map<int, std::function<void()>>;

    void tell();

    MainThread& mainThread_;
    std::shared_ptr<Handlers> handlers_ = std::make_shared<Handlers>();
    int nextID_ = 0;
    Task pending_;
};

}  // namespace velko
