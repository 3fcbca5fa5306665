#include "VelkoEngine/Hiding/VKAssessment.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko::VKAssessment {

namespace {

constexpr const char* classPrefix = "MBAssessmentMode";
constexpr std::string_view frameworkFolder = "/System/Library/PrivateFrameworks/MenuBarClientCore.framework/";
constexpr std::string_view libraryName = "/MenuBarClientCore";

FrameworkError bridgeError(std::string description) {
    return {.domain = "VKAssessment", .code = 1, .description = std::move(description)};
}

std::string words(const RaisedException& raised) {
    return raised.name + ": " + raised.reason;
}

std::string methodLine(const RuntimeMethod& method) {
    return (method.isClassMethod ? "+" : "-") + method.selector + " (" + method.typeEncoding + ")";
}

/// The one answer to an activation. The framework's handler shares it, on any thread and for any time.
/// Completion and assertion are destroyed on the main thread only, and as soon as the framework has answered.
class Answer final : private NonCopyable {
 public:
    Answer(const Platform& platform, Completion completion)
        : platform_(platform), completion_(std::move(completion)) {}
    ~Answer() { refuse(std::nullopt); }  // nobody is left who could answer

    /// Keeps the assertion alive until the framework has answered. Call it before the activation.
    void keep(PrivateFramework::ObjectRef assertion) { assertion_ = std::move(assertion); }

    /// The framework has put the assertion in force.
    void confirm() {
        const State before = answered();
        if (before == State::waiting) {
            tell({.assertion = std::move(assertion_), .error = std::nullopt});
        } else if (before == State::givenUp) {
            // The framework has raised an exception and confirmed all the same. Nobody owns this assertion.
            platform_.mainThread.post(
                [platform = platform_, late = std::move(assertion_)] { invalidate(platform, late); });
        }
    }

    /// The framework has refused, or will never answer.
    void refuse(std::optional<FrameworkError> error) {
        const State before = answered();
        if (before == State::waiting) {
            tell({.assertion = nullptr, .error = std::move(error)});
        }
        if (before != State::answered) {
            platform_.mainThread.post([ended = std::move(assertion_)] {});
        }
    }

    /// Answers with an error and waits no longer, though the framework may still answer.
    void giveUp(FrameworkError error) {
        State before = State::waiting;
        if (state_.compare_exchange_strong(before, State::givenUp)) {
            tell({.assertion = nullptr, .error = std::move(error)});
        }
    }

 private:
    enum class State : std::uint8_t { waiting, givenUp, answered };

    /// Marks it as answered and returns the state before. The caller that gets another state than `answered`
    /// is the only one that uses the assertion.
    State answered() { return state_.exchange(State::answered); }

    void tell(Activation outcome) {
        platform_.mainThread.post(
            [completion = std::move(completion_), outcome = std::move(outcome)] { completion(outcome); });
    }

    Platform platform_;
    Completion completion_;
    PrivateFramework::ObjectRef assertion_;
    std::atomic<State> state_ = State::waiting;
};

/// Makes the framework's objects and hands them over; the error of the step that failed.
std::expected<void, FrameworkError> begin(PrivateFramework& framework, const std::vector<int>& systemItems,
                                          const std::vector<BundleID>& bundleIdentifiers,
                                          const std::shared_ptr<Answer>& answer) {
    const auto raised = [](const RaisedException& exception) {
        return std::unexpected(bridgeError(words(exception)));
    };
    const auto configuration =
        framework.makeConfiguration(configurationClass, systemItems, bundleIdentifiers);
    if (!configuration) {
        return raised(configuration.error());
    }
    const auto assertion = framework.makeAssertion(assertionClass);
    if (!assertion) {
        return raised(assertion.error());
    }
    if (*configuration == nullptr || *assertion == nullptr) {
        return std::unexpected(bridgeError("Could not create the assessment configuration"));
    }
    answer->keep(*assertion);
    const auto sent =
        framework.activate(*assertion, *configuration, [answer](std::optional<FrameworkError> error) {
            if (error) {
                answer->refuse(std::move(error));
            } else {
                answer->confirm();
            }
        });
    return sent ? std::expected<void, FrameworkError>() : raised(sent.error());
}

/// The library to look into. The runtime lists classes only under the path by which the loader knows their
/// library. A class tells this path, or else the list of loaded libraries does.
std::string declaringImage(const PrivateFramework& framework) {
    for (const char* const className : {configurationClass, assertionClass}) {
        if (auto image = framework.imagePath(className)) {
            return *std::move(image);
        }
    }
    const auto libraries = framework.loadedLibraries();
    const auto found = std::ranges::find_if(libraries, [](const std::string& path) {
        return path.starts_with(frameworkFolder) && path.ends_with(libraryName);
    });
    return found == libraries.end() ? frameworkPath : *found;
}

}  // namespace

bool isAvailable(const Platform& platform) {
    PrivateFramework& framework = platform.privateFramework;
    return framework.open(frameworkPath) && framework.hasClass(configurationClass) &&
           framework.hasClass(assertionClass) && std::ranges::all_of(calls, [&](const Call& call) {
               return framework.instancesRespond(call.className, call.selector);
           });
}

ProbeReport probeReport(const Platform& platform) {
    PrivateFramework& framework = platform.privateFramework;
    ProbeReport report;
    const auto opened = framework.open(frameworkPath);
    report.loaded = opened.has_value();
    if (!opened) {
        report.loadError = opened.error().empty() ? "unknown" : opened.error();
    }
    report.image = framework.hasClass(configurationClass)
                       ? framework.imagePath(configurationClass).value_or("?")
                       : frameworkPath;
    if (const auto methods = framework.methods(declaringImage(framework))) {
        for (const auto& [className, classMethods] : *methods) {
            if (className.starts_with(classPrefix)) {
                auto& lines = report.classes[className];
                std::ranges::transform(classMethods, std::back_inserter(lines), methodLine);
                std::ranges::sort(lines);
            }
        }
    } else {
        report.loadError = words(methods.error());
    }
    report.checks = {{"framework loads (dlopen)", report.loaded},
                     {configurationClass, framework.hasClass(configurationClass)},
                     {assertionClass, framework.hasClass(assertionClass)}};
    for (const Call& call : calls) {
        report.checks.push_back({"-[" + std::string(call.className) + " " + call.selector + "]",
                                 framework.instancesRespond(call.className, call.selector)});
    }
    return report;
}

void activate(const Platform& platform, const std::vector<int>& systemItems,
              const std::vector<BundleID>& bundleIdentifiers, Completion completion) {
    const auto answer = std::make_shared<Answer>(platform, std::move(completion));
    if (!isAvailable(platform)) {
        answer->giveUp(bridgeError("MenuBarClientCore is unavailable on this macOS build"));
        return;
    }
    if (auto begun = begin(platform.privateFramework, systemItems, bundleIdentifiers, answer); !begun) {
        answer->giveUp(std::move(begun).error());
    }
}

void invalidate(const Platform& platform, const PrivateFramework::ObjectRef& assertion) {
    PrivateFramework& framework = platform.privateFramework;
    if (const auto ended = framework.invalidate(assertion); !ended) {
        framework.systemLog("VKAssessment: invalidate raised " + words(ended.error()));
    }
}

}  // namespace velko::VKAssessment

std::string velko::engineProbeReport(const Platform& platform) {
    const auto report = VKAssessment::probeReport(platform);
    std::string text = report.loaded ? "loaded: true" : "loaded: false";
    if (report.loadError && !report.loadError->empty()) {
        text += "\nerror: " + *report.loadError;
    }
    for (const auto& check : report.checks) {
        text += (check.ok ? "\nOK   " : "\nFAIL ") + check.name;
    }
    return text;
}
