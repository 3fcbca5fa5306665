#include <csignal>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <utility>

#include "Velko/App/EndingSignals.h"

namespace velko {
namespace {

class FakeSignals final : public Signals {
 public:
    std::set<int> ignored;

    [[nodiscard]] bool isIgnored(int signal) const override { return ignored.contains(signal); }
    [[nodiscard]] Subscription hear(int signal, std::function<void()> handler) override {
        handlers_[signal] = std::move(handler);
        return Subscription([this, signal] { handlers_.erase(signal); });
    }
    /// Returns whether somebody has heard it. Otherwise it ends the process, or is ignored.
    bool send(int signal) {
        const auto found = handlers_.find(signal);
        const bool isHeard = found != handlers_.end();
        if (isHeard) {
            const auto handler = found->second;
            handler();
        }
        return isHeard;
    }

 private:
    std::map<int, std::function<void()>> handlers_;
};

TEST(EndingSignals, QuitOnceAndThenEndAtOnce) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        FakeSignals signals;
        int quits = 0;
        const EndingSignals ending(signals, [&] { ++quits; });
        EXPECT_FALSE(signals.send(SIGUSR1));
        EXPECT_TRUE(signals.send(signal));
        EXPECT_EQ(quits, 1);
        for (const int second : {SIGTERM, SIGINT, SIGHUP}) {
            EXPECT_FALSE(signals.send(second)) << "While it quits, the system's own way must be open.";
        }
        EXPECT_EQ(quits, 1);
    }
}

TEST(EndingSignals, LeaveIgnoredWhatWhoeverStartedTheProgramWantsIgnored) {
    FakeSignals signals;
    signals.ignored = {SIGHUP};
    int quits = 0;
    {
        const EndingSignals ending(signals, [&] { ++quits; });
        EXPECT_FALSE(signals.send(SIGHUP));
        EXPECT_EQ(quits, 0);
        EXPECT_TRUE(signals.send(SIGTERM));
    }
    const EndingSignals another(signals, [&] { ++quits; });
    EXPECT_TRUE(signals.send(SIGINT));
    EXPECT_EQ(quits, 2);
}

}  // namespace
}  // namespace velko
