#pragma once

#include "Velko/App/EndingSignals.h"

namespace velko {

/// The process's signals, by way of the system's main queue.
class MacSignals final : public Signals {
 public:
    [[nodiscard]] bool isIgnored(int signal) const override;
    [[nodiscard]] Subscription hear(int signal, std::function<void()> handler) override;
};

}  // namespace velko
