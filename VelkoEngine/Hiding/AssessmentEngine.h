#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"
#include "VelkoEngine/Hiding/MenuBarEngine.h"
#include "VelkoEngine/Hiding/VKAssessment.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/PrivateFramework.h"

namespace velko {

/// Hides icons through the assessment mode of the system's menu bar, system items always excepted. Owns
/// the assertion in force and ends it on destruction; an answer that comes later than that, or after a
/// newer request, has its assertion ended at once. To ask for the plan in force is no newer request than one
/// that is about to renew that very plan. Main thread.
class AssessmentEngine final : public MenuBarEngine {
 public:
    explicit AssessmentEngine(const Platform& platform);
    ~AssessmentEngine() override;

    [[nodiscard]] bool isAvailable() const override;
    [[nodiscard]] const VisibilityPlan& current() const noexcept override { return current_; }
    void apply(const VisibilityPlan& plan, bool force, Completion completion) override;
    void showAll() override;

 private:
    /// What an activation in flight remembers of its request.
    struct Request {
        std::int64_t token;
        MainThread::Uptime start;
        VisibilityPlan plan;
        Completion completion;
    };

    void activate(const VisibilityPlan& plan, const std::vector<BundleID>& allowed, Completion completion);
    void finish(const Request& request, VKAssessment::Activation outcome);
    void endAssertion();

    Platform platform_;
    std::vector<int> systemItems_;  ///< all that stay, whatever the plan
    PrivateFramework::ObjectRef assertion_;
    std::int64_t generation_ = 0;  ///< grows with every request; an answer to an older one is stale
    VisibilityPlan current_ = VisibilityPlan::showAll();
    std::optional<VisibilityPlan> asked_;      ///< of the system, which has not answered yet
    std::shared_ptr<AssessmentEngine*> self_;  ///< answers in flight hold it weakly
};

}  // namespace velko
