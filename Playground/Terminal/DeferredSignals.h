#pragma once

#include <csignal>

#include "VelkoCore/NonCopyable.h"

namespace velko::playground {

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
