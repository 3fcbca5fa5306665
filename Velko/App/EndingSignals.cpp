#include "Velko/App/EndingSignals.h"

#include <csignal>
#include <utility>

namespace velko {

EndingSignals::EndingSignals(Signals& signals, std::function<void()> quit) : quit_(std::move(quit)) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        // A program that is started with "nohup" goes on after its terminal has closed.
        if (!signals.isIgnored(signal)) {
            subscriptions_.push_back(signals.hear(signal, [this] { heard(); }));
        }
    }
}

void EndingSignals::heard() {
    if (const auto quit = std::exchange(quit_, nullptr)) {
        subscriptions_.clear();
        quit();
    }
}

}  // namespace velko
