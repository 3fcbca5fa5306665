#include "Playground/Terminal/Terminal.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <unistd.h>

#include "VelkoEngine/Text/Utf8.h"

namespace velko::playground {

namespace {

constexpr std::string_view replacement = "\uFFFD";

/// How many bytes of well-formed UTF-8 are a control character at its start: none, one, or two for the second
/// set, whose characters some terminals obey too.
std::size_t lengthOfControl(std::string_view text) {
    const auto first = static_cast<unsigned char>(text.front());
    if (first < 0x20U || first == 0x7FU) {
        return 1;
    }
    const bool isSecondSet = first == 0xC2U && static_cast<unsigned char>(text[1]) < 0xA0U;
    return isSecondSet ? 2 : 0;
}

/// Broken pipes too: whoever reads what is printed may leave.
constexpr std::array endingSignals{SIGINT, SIGTERM, SIGHUP, SIGPIPE};

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
