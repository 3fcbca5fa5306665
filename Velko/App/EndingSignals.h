#pragma once

#include <functional>
#include <vector>

#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// The signals that this process gets. Main thread.
class Signals : private NonCopyable {
 public:
    virtual ~Signals() = default;

    /// Whether whoever started this process wants it to ignore the signal.
    [[nodiscard]] virtual bool isIgnored(int signal) const = 0;

    /// Calls `handler` on the main thread when the signal comes, which then does nothing else, until the
    /// subscription ends.
    [[nodiscard]] virtual Subscription hear(int signal, std::function<void()> handler) = 0;
};

/// Ends the program in the orderly way when a terminal, a script or the system asks it to end by a signal.
/// A second signal ends it at once: the system then shows every icon by itself. Main thread.
class EndingSignals final : private NonCopyable {
 public:
    EndingSignals(Signals& signals, std::function<void()> quit);

 private:
    void heard();

    std::function<void()> quit_;
    std::vector<Subscription> subscriptions_;
};

}  // namespace velko
