#include "Playground/Terminal/Terminal.h"

#include <algorithm>
#include <array>
#include <unistd.h>

namespace velko::playground {

namespace {

constexpr std::array ending{SIGINT, SIGTERM, SIGHUP};

/// SIGPIPE too: the reader of what we print may go away.
constexpr std::array deferred{SIGINT, SIGTERM, SIGHUP, SIGPIPE};

bool isIgnored(int signal) {
    struct sigaction action{};
    return ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

KeyByKey::KeyByKey() : isTerminal_(::isatty(STDIN_FILENO) == 1 && ::tcgetattr(STDIN_FILENO, &before_) == 0) {
    if (isTerminal_) {
        termios raw = before_;
        raw.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO | ISIG);
        ::tcsetattr(STDIN_FILENO, TCSANOW, &raw);
    }
}

KeyByKey::~KeyByKey() {
    if (isTerminal_) {
        ::tcsetattr(STDIN_FILENO, TCSANOW, &before_);
    }
}

sigset_t endingSignals() {
    sigset_t signals{};
    sigemptyset(&signals);
    for (const int signal : ending) {
        sigaddset(&signals, signal);
    }
    return signals;
}

DeferredSignals::DeferredSignals() {
    sigemptyset(&held_);
    for (const int signal : deferred) {
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
    return std::ranges::any_of(deferred, [&](int signal) {
        return sigismember(&held_, signal) == 1 && sigismember(&pending, signal) == 1;
    });
}

}  // namespace velko::playground
