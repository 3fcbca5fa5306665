#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Desktop/SimulatedPointer.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/ForwardingPorts.h"
#include "Simulator/Machine/SimulatedMac.h"
#include "Simulator/Time/SimulatedMainThread.h"

namespace velko {

/// The simulated framework with faults of its own.
class FaultyFramework final : public ForwardingFramework {
 public:
    using ForwardingFramework::ForwardingFramework;

    /// The simulated machine, with this framework in place of its own.
    [[nodiscard]] Platform on(SimulatedMac& mac) {
        return {mac.mainThread, mac.accessibility, mac.workspace, mac.displays, mac.pointer,
                mac.processes,  mac.windows,       *this,         mac.activity};
    }
    [[nodiscard]] std::expected<void, RaisedException> activate(const ObjectRef& assertion,
                                                                const ObjectRef& configuration,
                                                                Activated completion) override {
        auto begun = ForwardingFramework::activate(assertion, configuration,
                                                   tamper ? tamper(completion) : std::move(completion));
        return raisedByActivating ? std::unexpected(*raisedByActivating) : std::move(begun);
    }
    [[nodiscard]] std::expected<ObjectRef, RaisedException> makeAssertion(
        const std::string& className) override {
        auto assertion = makesAssertions ? ForwardingFramework::makeAssertion(className) : nullptr;
        made.push_back(assertion.value_or(nullptr));
        return assertion;
    }
    [[nodiscard]] std::expected<void, RaisedException> invalidate(const ObjectRef& assertion) override {
        return raised ? std::unexpected(*raised) : ForwardingFramework::invalidate(assertion);
    }
    [[nodiscard]] std::expected<std::map<std::string, std::vector<RuntimeMethod>>, RaisedException> methods(
        const std::string& path) const override {
        return raised ? std::unexpected(*raised) : ForwardingFramework::methods(path);
    }

    std::function<Activated(const Activated&)> tamper;  ///< makes another handler of the one handed over
    bool makesAssertions = true;
    std::vector<std::weak_ptr<Object>> made;
    std::optional<RaisedException> raisedByActivating;  ///< although it has begun
    std::optional<RaisedException> raised;              ///< by ending an assertion and by looking at methods
};

}  // namespace velko
