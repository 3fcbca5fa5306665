#pragma once

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "VelkoCore/Identifiers.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/PrivateFramework.h"

/// The assessment mode of the system's menu bar: while an assertion is valid, only the listed apps' status
/// items and the listed system items stay. The framework behind it is private and may be absent or change,
/// so every class and selector is looked up by name at every call. Main thread.
namespace velko::VKAssessment {

inline constexpr auto frameworkPath =
    "/System/Library/PrivateFrameworks/MenuBarClientCore.framework/MenuBarClientCore";
inline constexpr auto configurationClass = "MBAssessmentModeConfiguration";
inline constexpr auto assertionClass = "MBAssessmentModeAssertion";

/// A method that hiding calls, and how: its types as the object runtime writes them, without offsets.
struct Call {
    const char* className;
    const char* selector;
    const char* types;
};
inline constexpr std::array calls{
    Call{configurationClass, "initWithAllowedSystemItems:allowedBundleIdentifiers:", "@@:@@"},
    Call{assertionClass, "activateWithConfiguration:completionHandler:", "v@:@@?"},
    Call{assertionClass, "invalidate", "v@:"},
};

/// Whether the framework has everything that hiding needs.
[[nodiscard]] bool isAvailable(const Platform& platform);

/// One thing that hiding needs, and whether it is there.
struct Check {
    std::string name;
    bool ok = false;

    bool operator==(const Check&) const = default;
};

/// What the framework looks like on this system, for diagnosis.
struct ProbeReport {
    bool loaded = false;
    std::optional<std::string>
        loadError;      ///< the loader's words, or those of an exception raised by the look
    std::string image;  ///< the library that defines the configuration; "?" when not known
    std::map<std::string, std::vector<std::string>> classes;  ///< methods by class, as "-selector (types)"
    std::vector<Check> checks;

    bool operator==(const ProbeReport&) const = default;
};

[[nodiscard]] ProbeReport probeReport(const Platform& platform);

/// The outcome of an activation: the assertion in force, or the error. Both are missing when the framework
/// lets go of its handler without an answer.
struct Activation {
    PrivateFramework::ObjectRef assertion;
    std::optional<FrameworkError> error;
};
using Completion = std::function<void(Activation)>;

/// Asks for a new assertion that allows the numbered system items and the apps. `completion` is called
/// exactly once, later, on the main thread, however often and wherever the framework answers.
void activate(const Platform& platform, const std::vector<int>& systemItems,
              const std::vector<BundleID>& bundleIdentifiers, Completion completion);

/// Ends an assertion. What the framework raises goes to the system's log.
void invalidate(const Platform& platform, const PrivateFramework::ObjectRef& assertion);

}  // namespace velko::VKAssessment

namespace velko {

/// Whether hiding can work on this system and what is missing, as lines for the log. Main thread.
[[nodiscard]] std::string engineProbeReport(const Platform& platform);

}  // namespace velko
