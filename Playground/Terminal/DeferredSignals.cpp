#include "Playground/Terminal/DeferredSignals.h"

#include <algorithm>
#include <array>

namespace velko::playground {

namespace {

/// Broken pipes too: whoever reads what is printed may leave.
constexpr std::array endingSignals{SIGINT, SIGTERM, SIGHUP, SIGPIPE};

bool isIgnored(int signal) {
    struct sigaction action{};
    return ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

DeferredSignals::DeferredSignals() {
    sigemptyset(&held_);
    for (const int signal : endingSignals) {
        if (!isIgnored(signal)) {
            sigaddset(&held_, signal);
        }
    }
    ::sigprocmask(SIG_BLOCK, &held_, &before_);
}

DeferredSignals::~DeferredSignals() {
    ::sigprocmask(SIG_SETMASK, &before_, nullptr);
}

bool DeferredSignals::hasCome() const {
    sigset_t pending{};
    ::sigpending(&pending);
    return std::ranges::any_of(endingSignals, [&](int signal) {
        return sigismember(&held_, signal) == 1 && sigismember(&pending, signal) == 1;
    });
}

}  // namespace velko::playground
