#pragma once

#include <expected>
#include <functional>

#include "VelkoCore/NonCopyable.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"
#include "VelkoEngine/Hiding/EngineError.h"

namespace velko {

/// What makes a plan the system's state. Main thread.
class MenuBarEngine : private NonCopyable {
 public:
    /// The time that the system took, in milliseconds (0 when there was nothing to do), or the failure.
    using Result = std::expected<double, EngineFailure>;
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

}  // namespace velko
