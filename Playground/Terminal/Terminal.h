#pragma once

#include <csignal>
#include <termios.h>

#include "VelkoCore/NonCopyable.h"

namespace velko::playground {

/// While this exists, the terminal delivers each key at once and does not show it. If the standard input is
/// no terminal, nothing changes.
class KeyByKey final : private NonCopyable {
 public:
    KeyByKey();
    ~KeyByKey();

 private:
    termios before_{};
    bool isTerminal_;
};

/// The signals by which a user or the system ends a program.
[[nodiscard]] sigset_t endingSignals();

/// While this exists, the signals that end a program wait, so that the program can clean up first. The
/// program asks whether one has come, and stops by itself. After that such a signal has its usual effect.
/// Ignored signals stay ignored. Only for programs with one thread.
class DeferredSignals final : private NonCopyable {
 public:
    DeferredSignals();
    ~DeferredSignals();

    [[nodiscard]] bool hasCome() const;

 private:
    sigset_t held_{};
    sigset_t before_{};
};

}  // namespace velko::playground
