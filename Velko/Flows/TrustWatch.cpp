#include "Velko/Flows/TrustWatch.h"

#include <utility>

#include "Velko/Flows/Beat.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

namespace {

/// While the permission holds, only every third look asks another app: each is a message more.
constexpr int looksPerQuestion = 3;

}  // namespace

TrustWatch::TrustWatch(FlowHost& host, const Platform& platform, std::function<void(bool)> changed)
    : host_(host), platform_(platform), changed_(std::move(changed)) {}

void TrustWatch::start(Beat& beat) {
    const auto isMissing = [this] { return host_.values().problems.trustMissing; };
    beat.add({.period = Timing::trustPollInterval, .hasWork = isMissing, .run = [this] { look(); }});
    beat.add({.period = Timing::trustCalmInterval,
              .early = Timing::trustPollInterval,
              .hasWork = [isMissing] { return !isMissing(); },
              .run = [this] { look(); }});
}

bool TrustWatch::holds() {
    const bool says = AX::isTrusted(platform_);
    if (systemSays_ != says) {
        systemSays_ = says;
        holds_ = says;
        asking_.cancel();  // what was asked before is older than this
    }
    return holds_;
}

bool TrustWatch::check() {
    const bool trusted = holds();
    if (trusted == host_.values().problems.trustMissing) {
        changed_(trusted);
    }
    return trusted;
}

void TrustWatch::look() {
    if (!check() || --looksUntilAsking_ <= 0 || whenProven_) {
        ask();
    }
}

void TrustWatch::appsWereRead(bool anyAnswered) {
    if (anyAnswered) {
        looksUntilAsking_ = looksPerQuestion;
    } else {
        ask();
    }
}

void TrustWatch::prove(std::function<void()> then) {
    whenProven_ = std::move(then);
    ask();
}

void TrustWatch::ask() {
    if (asking_.isPending()) {
        return;
    }
    looksUntilAsking_ = looksPerQuestion;
    asking_ = platform_.mainThread.background(
        [platform = platform_, witnesses = TrustEvidence::witnesses(platform_)] {
            return TrustEvidence::ask(platform, witnesses);
        },
        [this](std::optional<bool> evidence) {
            if (evidence) {
                hear(*evidence);
            }
        });
}

void TrustWatch::hear(bool evidence) {
    const auto said = systemSays_;
    static_cast<void>(holds());
    if (systemSays_ != said) {
        check();  // the system knows something newer
        return;
    }
    holds_ = evidence;
    const auto whenProven = std::exchange(whenProven_, nullptr);
    check();
    if (evidence && whenProven) {
        whenProven();
    }
}

}  // namespace velko
