#include <algorithm>
#include <limits>
#include <string>
#include <variant>

#include "VelkoEngine/Contracts/Contracts.h"
#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/Processes.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko::Contracts {

namespace {

constexpr Uptime timeout = std::chrono::milliseconds(500);
constexpr ProcessID absentPID = std::numeric_limits<ProcessID>::max();

std::string seenError(const std::expected<AXValue, AXError>& value) {
    return value ? "a value" : "error " + std::to_string(static_cast<int>(value.error()));
}

void checkOwnTree(const Accessibility& accessibility, ProcessID own, Checks& checks) {
    const auto application = accessibility.application(own, timeout);
    const auto role = accessibility.attribute(application, "AXRole");
    const auto* text = role ? std::get_if<std::string>(&*role) : nullptr;
    expect(checks, "Accessibility: an application says that it is one",
           text != nullptr && *text == "AXApplication", text != nullptr ? *text : seenError(role));

    const auto names = accessibility.attributeNames(application);
    expect(checks, "Accessibility: an element names its attributes",
           names && std::ranges::count(*names, "AXRole") == 1);

    const auto unknown = accessibility.attribute(application, "AXNobodyHasThisAttribute");
    expect(checks, "Accessibility: an attribute that an element lacks is an error", !unknown,
           seenError(unknown));

    const auto several =
        accessibility.attributes(application, {"AXNobodyHasThisAttribute", "AXRole", "AXChildren"});
    const auto* second = several && several->size() == 3 && (*several)[1]
                             ? std::get_if<std::string>(&*(*several)[1])
                             : nullptr;
    expect(checks, "Accessibility: several attributes come as single ones do, one missing among them",
           second != nullptr && *second == "AXApplication" && !(*several)[0] && (*several)[2] &&
               std::holds_alternative<std::vector<AXElement>>(*(*several)[2]),
           several ? std::to_string(several->size()) + " answers" : "an error");

    const auto children = accessibility.attribute(application, "AXChildren");
    const auto* list = children ? std::get_if<std::vector<AXElement>>(&*children) : nullptr;
    expect(checks, "Accessibility: children come as a list of elements of the same process",
           list != nullptr && std::ranges::all_of(*list, [&](const auto& child) {
               return accessibility.pid(child) == std::expected<ProcessID, AXError>(own);
           }));
}

/// Questions, actions and observers for a process that does not exist.
void checkWithoutEffect(const Platform& platform, Checks& checks) {
    Accessibility& accessibility = platform.accessibility;
    const auto start = platform.mainThread.now();
    const auto found = accessibility.elementAt({.x = 1, .y = 1}, timeout);
    const Uptime cost = platform.mainThread.now() - start;
    expect(
        checks, "Accessibility: what lies under a point is told in time, and only with the permission",
        cost < 2 * timeout && (accessibility.isTrusted() || !found),
        std::string(found ? "an element" : "nothing") + " after " + std::to_string(secondsOf(cost)) + " s");

    const auto absent = accessibility.application(absentPID, timeout);
    expect(checks, "Accessibility: a process that does not exist does nothing",
           !accessibility.perform(absent, "AXPress"));
    const auto own = accessibility.application(platform.processes.ownPID(), timeout);
    expect(checks, "Accessibility: an action that nobody knows is refused",
           !accessibility.perform(own, "AXNobodyHasThisAction"));

    const auto observer =
        accessibility.observe(absentPID, timeout, [](const std::string&, const AXElement&) {});
    expect(checks, "Accessibility: a process that does not exist cannot be listened to",
           !observer || !observer->add(absent, "AXMenuClosed"));
}

void checkObserving(const Platform& platform, ProcessID pid, Checks& checks) {
    Accessibility& accessibility = platform.accessibility;
    auto observer = accessibility.observe(pid, timeout, [](const std::string&, const AXElement&) {});
    const bool isMade = observer != nullptr;
    observer.reset();
    expect(checks, "Accessibility: an app can be listened to, and that ends", isMade);
}

}  // namespace

void checkAccessibility(const Platform& platform, Checks& checks) {
    const Accessibility& accessibility = platform.accessibility;
    const ProcessID own = platform.processes.ownPID();
    const auto application = accessibility.application(own, timeout);
    expect(checks, "Accessibility: an element knows its process",
           accessibility.pid(application) == std::expected<ProcessID, AXError>(own));

    const auto absent = accessibility.attribute(accessibility.application(absentPID, timeout), "AXRole");
    expect(checks, "Accessibility: a process that does not exist has no attributes", !absent,
           seenError(absent));

    checkWithoutEffect(platform, checks);
    if (accessibility.isTrusted()) {
        checkOwnTree(accessibility, own, checks);
        checkObserving(platform, own, checks);
        return;
    }
    for (const auto& other : platform.workspace.runningApplications()) {
        if (other.pid != own) {
            const auto role =
                accessibility.attribute(accessibility.application(other.pid, timeout), "AXRole");
            expect(checks, "Accessibility: without the permission other apps say nothing", !role,
                   seenError(role));
            return;
        }
    }
}

}  // namespace velko::Contracts
