#include "VelkoEngine/Hiding/MenuBarEngine.h"

#include <ranges>
#include <utility>
#include <vector>

namespace velko {

std::string describe(EngineError error) {
    switch (error) {
        case EngineError::unavailable: return "Menu bar hiding is not supported on this macOS build";
        case EngineError::activationFailed: break;
    }
    return "macOS refused the hiding request";
}

std::string describe(const EngineFailure& failure) {
    const auto* const reported = std::get_if<FrameworkError>(&failure);
    return reported != nullptr ? reported->description : describe(std::get<EngineError>(failure));
}

namespace {

/// The numbers of every system item that there may be: they always stay visible.
std::vector<int> allSystemItems() {
    const auto all = std::views::iota(0, 64);
    return {all.begin(), all.end()};
}

}  // namespace

AssessmentEngine::AssessmentEngine(const Platform& platform)
    : platform_(platform), systemItems_(allSystemItems()), self_(std::make_shared<AssessmentEngine*>(this)) {}

AssessmentEngine::~AssessmentEngine() {
    endAssertion();
}

bool AssessmentEngine::isAvailable() const {
    return VKAssessment::isAvailable(platform_);
}

void AssessmentEngine::apply(const VisibilityPlan& plan, bool force, Completion completion) {
    if (!force && plan == current_) {
        if (asked_ != current_) {
            ++generation_;  // another plan may be on its way, which is no longer wanted
            asked_.reset();
        }
        completion(Uptime::zero());
        return;
    }
    const auto allowed = plan.allowed();
    if (!allowed) {
        showAll();
        completion(Uptime::zero());
        return;
    }
    if (!isAvailable()) {
        showAll();
        completion(std::unexpected(EngineError::unavailable));
        return;
    }
    activate(plan, *allowed, std::move(completion));
}

void AssessmentEngine::activate(const VisibilityPlan& plan, const std::vector<BundleID>& allowed,
                                Completion completion) {
    asked_ = plan;
    const auto request = std::make_shared<const Request>(Request{.token = ++generation_,
                                                                 .start = platform_.mainThread.now(),
                                                                 .plan = plan,
                                                                 .completion = std::move(completion)});
    VKAssessment::activate(
        platform_, systemItems_, allowed,
        [platform = platform_, weak = std::weak_ptr(self_), request](VKAssessment::Activation outcome) {
            if (const auto self = weak.lock()) {
                (*self)->finish(*request, std::move(outcome));
            } else if (outcome.assertion) {
                VKAssessment::invalidate(platform, outcome.assertion);
            }
        });
}

void AssessmentEngine::finish(const Request& request, VKAssessment::Activation outcome) {
    if (request.token != generation_) {
        if (outcome.assertion) {
            VKAssessment::invalidate(platform_, outcome.assertion);
        }
        return;
    }
    asked_.reset();
    if (!outcome.assertion) {
        showAll();
        request.completion(std::unexpected(outcome.error ? EngineFailure(*std::move(outcome.error))
                                                         : EngineFailure(EngineError::activationFailed)));
        return;
    }
    const auto elapsed = platform_.mainThread.now() - request.start;
    // The new assertion is in force already, so that nothing flashes up when the old one ends.
    const auto previous = std::exchange(assertion_, std::move(outcome.assertion));
    current_ = request.plan;
    if (previous) {
        VKAssessment::invalidate(platform_, previous);
    }
    request.completion(elapsed);
}

void AssessmentEngine::showAll() {
    ++generation_;
    asked_.reset();
    endAssertion();
    current_ = VisibilityPlan::showAll();
}

void AssessmentEngine::endAssertion() {
    if (const auto assertion = std::exchange(assertion_, nullptr)) {
        VKAssessment::invalidate(platform_, assertion);
    }
}

}  // namespace velko
