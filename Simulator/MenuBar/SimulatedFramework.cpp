#include "Simulator/MenuBar/SimulatedFramework.h"

#include <algorithm>
#include <utility>

namespace velko {

namespace {

constexpr auto configurationClass = "MBAssessmentModeConfiguration";
constexpr auto assertionClass = "MBAssessmentModeAssertion";
constexpr auto initialiser = "initWithAllowedSystemItems:allowedBundleIdentifiers:";
constexpr auto activateSelector = "activateWithConfiguration:completionHandler:";
constexpr auto invalidateSelector = "invalidate";

RaisedException unrecognized(const std::string& className, const std::string& selector) {
    return {.name = "NSInvalidArgumentException",
            .reason = "-[" + className + " " + selector + "]: unrecognized selector sent to instance"};
}

std::map<std::string, std::vector<RuntimeMethod>> usualClasses() {
    return {{configurationClass,
             {{.isClassMethod = false, .selector = initialiser, .typeEncoding = "@32@0:8@16@24"},
              {.isClassMethod = false, .selector = "allowedSystemItems", .typeEncoding = "@16@0:8"},
              {.isClassMethod = true, .selector = "supportsSecureCoding", .typeEncoding = "B16@0:8"}}},
            {assertionClass,
             {{.isClassMethod = false, .selector = invalidateSelector, .typeEncoding = "v16@0:8"},
              {.isClassMethod = false, .selector = activateSelector, .typeEncoding = "v32@0:8@16@?24"}}},
            {"MBMenuBarClient",
             {{.isClassMethod = true, .selector = "sharedClient", .typeEncoding = "@16@0:8"}}}};
}

}  // namespace

/// The active assertions. They are kept outside the framework's object, so that an assertion which outlives
/// the machine does not use a destroyed object.
struct SimulatedFramework::Ledger {
    struct Active {
        const Assertion* assertion;
        SimulatedAllowlist allowlist;
    };

    MachineThread& mainThread;
    std::function<void()> inForceChanged;
    std::vector<Active> active{};  // the newest last
    std::optional<MainThread::Uptime> emptySince{};
    std::vector<Gap> gaps{};

    [[nodiscard]] std::optional<SimulatedAllowlist> inForce() const {
        return active.empty() ? std::nullopt : std::optional(active.back().allowlist);
    }

    void begin(const Assertion* assertion, const SimulatedAllowlist& allowlist, MainThread::Uptime askedAt) {
        const auto before = inForce();
        std::erase_if(active, [assertion](const auto& each) { return each.assertion == assertion; });
        active.push_back({.assertion = assertion, .allowlist = allowlist});
        if (!before && emptySince && askedAt <= *emptySince) {
            gaps.push_back({.from = *emptySince, .to = mainThread.now()});
        }
        tell(before);
    }

    void end(const Assertion* assertion) {
        const auto before = inForce();
        std::erase_if(active, [assertion](const auto& each) { return each.assertion == assertion; });
        if (before && active.empty()) {
            noteEmpty();
        }
        tell(before);
    }

    /// An assertion that ends as soon as it is in force was cancelled before, so it ends no gap.
    void noteEmpty() {
        if (emptySince && !gaps.empty() && gaps.back().from == *emptySince &&
            gaps.back().to == mainThread.now()) {
            gaps.pop_back();
        } else {
            emptySince = mainThread.now();
        }
    }

    void tell(const std::optional<SimulatedAllowlist>& before) const {
        if (inForceChanged && before != inForce()) {
            inForceChanged();
        }
    }
};

class SimulatedFramework::Configuration final : public Object {
 public:
    explicit Configuration(SimulatedAllowlist list) : allowlist(std::move(list)) {}

    const SimulatedAllowlist allowlist;
};

class SimulatedFramework::Assertion final : public Object {
 public:
    Assertion(std::string name, const std::shared_ptr<Ledger>& ledger)
        : className(std::move(name)), ledger_(ledger) {}
    Assertion(const Assertion&) = delete;
    Assertion& operator=(const Assertion&) = delete;
    ~Assertion() override { end(); }

    void end() const {
        if (const auto ledger = ledger_.lock()) {
            ledger->end(this);
        }
    }

    const std::string className;
    bool isInvalidated = false;

 private:
    std::weak_ptr<Ledger> ledger_;
};

SimulatedFramework::SimulatedFramework(MachineThread& mainThread, std::function<void()> inForceChanged)
    : path("/System/Library/PrivateFrameworks/MenuBarClientCore.framework/MenuBarClientCore"),
      image("/System/Library/PrivateFrameworks/MenuBarClientCore.framework/Versions/A/MenuBarClientCore"),
      classes(usualClasses()),
      mainThread_(mainThread),
      ledger_(std::make_shared<Ledger>(mainThread, std::move(inForceChanged))) {}

SimulatedFramework::~SimulatedFramework() = default;

std::expected<void, std::string> SimulatedFramework::open(const std::string& libraryPath) {
    if (!installed || libraryPath != path) {
        return std::unexpected(loadError);
    }
    loaded_ = true;
    return {};
}

bool SimulatedFramework::hasClass(const std::string& className) const {
    return loaded_ && classes.contains(className);
}

bool SimulatedFramework::instancesRespond(const std::string& className, const std::string& selector) const {
    return hasClass(className) && std::ranges::any_of(classes.at(className), [&](const auto& method) {
               return !method.isClassMethod && method.selector == selector;
           });
}

std::optional<std::string> SimulatedFramework::imagePath(const std::string& className) const {
    return hasClass(className) ? std::optional(image) : std::nullopt;
}

std::vector<std::string> SimulatedFramework::loadedLibraries() const {
    std::vector<std::string> libraries{"/usr/lib/libSystem.B.dylib"};
    if (loaded_) {
        libraries.push_back(image);
    }
    return libraries;
}

std::expected<std::map<std::string, std::vector<RuntimeMethod>>, RaisedException> SimulatedFramework::methods(
    const std::string& libraryPath) const {
    if (!loaded_ || libraryPath != image) {
        return {};
    }
    return classes;
}

std::expected<PrivateFramework::ObjectRef, RaisedException> SimulatedFramework::makeConfiguration(
    const std::string& className, const std::vector<int>& allowedSystemItems,
    const std::vector<BundleID>& allowedBundleIDs) {
    if (!hasClass(className)) {
        return nullptr;
    }
    if (!instancesRespond(className, initialiser)) {
        return std::unexpected(unrecognized(className, initialiser));
    }
    return std::make_shared<Configuration>(
        SimulatedAllowlist{.systemItems = allowedSystemItems, .bundleIDs = allowedBundleIDs});
}

std::expected<PrivateFramework::ObjectRef, RaisedException> SimulatedFramework::makeAssertion(
    const std::string& className) {
    if (!hasClass(className)) {
        return nullptr;
    }
    return std::make_shared<Assertion>(className, ledger_);
}

std::expected<void, RaisedException> SimulatedFramework::activate(const ObjectRef& assertion,
                                                                  const ObjectRef& configuration,
                                                                  Activated completion) {
    ++activations_;
    const auto target = std::dynamic_pointer_cast<Assertion>(assertion);
    const auto wanted = std::dynamic_pointer_cast<Configuration>(configuration);
    if (!target || !instancesRespond(target->className, activateSelector)) {
        return std::unexpected(unrecognized(target ? target->className : "NSObject", activateSelector));
    }
    if (!wanted) {
        return std::unexpected(
            RaisedException{.name = "NSInvalidArgumentException", .reason = "no configuration"});
    }
    if (exception) {
        return std::unexpected(*exception);
    }
    ++unanswered_;
    mainThread_.happen(answerDelay, [this, weak = std::weak_ptr<Object>(target), list = wanted->allowlist,
                                     askedAt = mainThread_.now(), completion = std::move(completion)] {
        answer(weak, list, askedAt, completion);
    });
    return {};
}

void SimulatedFramework::answer(const std::weak_ptr<Object>& assertion, const SimulatedAllowlist& allowlist,
                                MainThread::Uptime askedAt, const Activated& completion) {
    --unanswered_;
    const auto target = std::static_pointer_cast<Assertion>(assertion.lock());
    if (!target) {
        return;
    }
    if (refusal && refusalsLeft != 0) {
        refusalsLeft = refusalsLeft ? std::optional(*refusalsLeft - 1) : std::nullopt;
        completion(refusal);
        return;
    }
    if (target->isInvalidated) {
        completion(FrameworkError{.domain = "MenuBarClientCore", .code = 2, .description = "invalidated"});
        return;
    }
    ledger_->begin(target.get(), allowlist, askedAt);
    completion(std::nullopt);
}

std::expected<void, RaisedException> SimulatedFramework::invalidate(const ObjectRef& assertion) {
    const auto target = std::dynamic_pointer_cast<Assertion>(assertion);
    if (!target || !instancesRespond(target->className, invalidateSelector)) {
        return {};
    }
    ++invalidations_;
    target->isInvalidated = true;
    target->end();
    return {};
}

std::optional<SimulatedAllowlist> SimulatedFramework::inForce() const {
    return ledger_->inForce();
}

std::size_t SimulatedFramework::activeAssertions() const {
    return ledger_->active.size();
}

const std::vector<SimulatedFramework::Gap>& SimulatedFramework::gaps() const {
    return ledger_->gaps;
}

}  // namespace velko
