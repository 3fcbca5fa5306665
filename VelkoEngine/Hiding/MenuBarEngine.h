#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"
#include "VelkoEngine/Hiding/VKAssessment.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/PrivateFramework.h"

namespace velko {

/// Why icons could not be hidden, where the system gives no reason of its own.
enum class EngineError { unavailable, activationFailed };

/// Why icons could not be hidden: our word for it or the framework's.
using EngineFailure = std::variant<EngineError, FrameworkError>;

/// The failure in words for people.
[[nodiscard]] std::string describe(EngineError error);
[[nodiscard]] std::string describe(const EngineFailure& failure);

/// What makes a plan the system's state. Main thread.
class MenuBarEngine : private NonCopyable {
 public:
    /// The time that the system took (zero when there was nothing to do), or the failure.
    using Result = std::expected<Uptime, EngineFailure>;
    using Completion = std::function<void(const Result&)>;

    virtual ~MenuBarEngine() = default;

    /// Whether icons can be hidden on this system; asked anew at every call.
    [[nodiscard]] virtual bool isAvailable() const = 0;

    /// The plan that the system last confirmed, or show-all.
    [[nodiscard]] virtual const VisibilityPlan& current() const noexcept = 0;

    /// Makes `plan` the system's state; nothing is sent when it already is and `force` is false.
    /// `completion` is called once, unless a later call comes before the system's answer.
    virtual void apply(const VisibilityPlan& plan, bool force, Completion completion) = 0;

    /// Ends hiding at once. Answers still awaited become void.
    virtual void showAll() = 0;
};

/// Hides icons through the assessment mode of the system's menu bar, system items always excepted. Owns the
/// assertion in force and ends it on destruction; when an answer comes after that, or after a newer request,
/// its assertion is ended at once. A request for the plan in force does not make void a request that renews
/// this same plan. Main thread.
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
    std::optional<VisibilityPlan> asked_;      ///< for, but not answered yet
    std::shared_ptr<AssessmentEngine*> self_;  ///< answers in flight hold it weakly
};

}  // namespace velko
