#include "Playground/Terminal/Terminal.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <unistd.h>

#include "VelkoEngine/Text/Text.h"

namespace velko::playground {

namespace {

constexpr std::string_view replacement = "\uFFFD";

/// The length in bytes of a control character at the start of well-formed UTF-8; 0 if there is none.
/// Characters of the second set have two bytes, and some terminals obey them too.
std::size_t lengthOfControl(std::string_view text) {
    const auto first = static_cast<unsigned char>(text.front());
    if (first < 0x20U || first == 0x7FU) {
        return 1;
    }
    const bool isSecondSet = first == 0xC2U && static_cast<unsigned char>(text[1]) < 0xA0U;
    return isSecondSet ? 2 : 0;
}

constexpr std::array ending{SIGINT, SIGTERM, SIGHUP};

/// SIGPIPE too: the reader of what we print may go away.
constexpr std::array deferred{SIGINT, SIGTERM, SIGHUP, SIGPIPE};

bool isIgnored(int signal) {
    struct sigaction action{};
    return ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

std::string printable(std::string_view line) {
    const std::string whole = repairedUtf8(line);
    std::string result;
    for (std::string_view rest = whole; !rest.empty();) {
        const std::size_t control = lengthOfControl(rest);
        result += control > 0 ? replacement : rest.substr(0, 1);
        rest.remove_prefix(control > 0 ? control : 1);
    }
    return result;
}

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
