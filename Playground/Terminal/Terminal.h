#pragma once

#include <csignal>
#include <string>
#include <string_view>
#include <termios.h>

#include "VelkoCore/NonCopyable.h"

namespace velko::playground {

/// A line from outside as a terminal may get it: what would work the terminal becomes U+FFFD.
[[nodiscard]] std::string printable(std::string_view line);

/// A terminal that hands over each key at once and does not show it, until the end of the scope. Where the
/// standard input is no terminal, nothing changes.
class KeyByKey final : private NonCopyable {
 public:
    KeyByKey();
    ~KeyByKey();

 private:
    termios before_{};
    bool isTerminal_;
};

/// Keeps the signals that end a program waiting, so that it can clean up first: it asks whether one has come
/// and stops by itself. When this goes, such a signal has its usual effect. Signals that are ignored stay so.
/// For programs of one thread.
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
