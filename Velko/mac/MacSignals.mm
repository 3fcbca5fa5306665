#include "Velko/mac/MacSignals.h"

#import <dispatch/dispatch.h>

#include <csignal>
#include <utility>

namespace velko {

bool MacSignals::isIgnored(int signal) const {
    struct sigaction now{};
    return sigaction(signal, nullptr, &now) == 0 && now.sa_handler == SIG_IGN;
}

Subscription MacSignals::hear(int signal, std::function<void()> handler) {
    // The queue hears of ignored signals too. What is not ignored would end the process first.
    std::signal(signal, SIG_IGN);
    const dispatch_source_t source = dispatch_source_create(
        DISPATCH_SOURCE_TYPE_SIGNAL, static_cast<std::uintptr_t>(signal), 0, dispatch_get_main_queue());
    dispatch_source_set_event_handler(source, ^{
      handler();
    });
    dispatch_activate(source);
    return Subscription([source, signal] {
        dispatch_source_cancel(source);
        std::signal(signal, SIG_DFL);
    });
}

}  // namespace velko
