#pragma once

#include <optional>
#include <string>
#include <vector>

#include "VelkoCore/Geometry.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Processes.h"

namespace velko {

/// Reading single Accessibility elements. Whatever goes wrong reads as "no value". Any thread, but for the
/// permission calls.
namespace AX {

/// The element of a process, with the messaging time-out, so that a hung app blocks the caller only for a
/// moment.
[[nodiscard]] AXElement application(const Accessibility& accessibility, ProcessID pid);

/// An attribute that holds text.
[[nodiscard]] std::optional<std::string> string(const Accessibility& accessibility, const AXElement& element,
                                                const std::string& attribute);

/// An attribute that holds text or a number, as text; a switch counts as 1 or 0, anything else is empty.
[[nodiscard]] std::string attributeText(const Accessibility& accessibility, const AXElement& element,
                                        const std::string& attribute);

/// Whether the process has answered, even if only that there is no such attribute. A time-out or a missing
/// permission is no answer.
[[nodiscard]] bool isHeard(const AXAnswer& answer);

/// Several attributes with one message: as many answers as names, each an error when the element does not
/// answer at all.
[[nodiscard]] std::vector<AXAnswer> attributes(const Accessibility& accessibility, const AXElement& element,
                                               const std::vector<std::string>& names);

/// Text or a number, as text; a switch counts as 1 or 0, anything else is empty.
[[nodiscard]] std::string text(const AXAnswer& answer);

/// The frame made of the answers for position and size, when both have a value and are finite.
[[nodiscard]] std::optional<Rect> frame(const AXAnswer& position, const AXAnswer& size);

/// An attribute that holds an element.
[[nodiscard]] std::optional<AXElement> element(const Accessibility& accessibility, const AXElement& element,
                                               const std::string& attribute);

/// The element's children, in the app's own order.
[[nodiscard]] std::vector<AXElement> children(const Accessibility& accessibility, const AXElement& element);

/// Position and size, when both can be read and are finite; origin at the top left of the primary screen.
[[nodiscard]] std::optional<Rect> frame(const Accessibility& accessibility, const AXElement& element);

/// The first text among title, description, help and identifier that is not empty, or the empty one.
[[nodiscard]] std::string title(const Accessibility& accessibility, const AXElement& element);

/// The elements of a process's status items, in its own order.
[[nodiscard]] std::vector<AXElement> statusItems(const Accessibility& accessibility, ProcessID pid);

/// Likewise; nothing when the process does not answer.
[[nodiscard]] std::optional<std::vector<AXElement>> statusItemsIfHeard(const Accessibility& accessibility,
                                                                       ProcessID pid);

/// The processes that run an app with that identifier, in the system's order.
[[nodiscard]] std::vector<ProcessID> pids(const Platform& platform, const BundleID& bundleID);

/// The first process that runs an app with that identifier, else the first with exactly that name.
[[nodiscard]] std::optional<ProcessID> pid(const Platform& platform, const BundleID& bundleID,
                                           const std::string& processName);

/// The process that draws iPhone Live Activities.
[[nodiscard]] std::optional<ProcessID> liveActivityHelperPID(const Platform& platform);

/// The process that hosts the menu bar's items.
[[nodiscard]] std::optional<ProcessID> menuBarHostPID(const Platform& platform);

/// Whether the user lets this process use Accessibility. Main thread.
[[nodiscard]] bool isTrusted(const Platform& platform);

/// Makes the system ask the user for that permission. Main thread.
void promptForTrust(const Platform& platform);

/// Opens the page of the system's settings where that permission is given. Main thread.
void openAccessibilitySettings(const Platform& platform);

}  // namespace AX

/// One element of a walk.
struct Walked {
    /// Null for an element of this process. Nobody may ask it: it would answer within the call and on this
    /// thread, though it belongs to the main thread.
    const AXElement* element = nullptr;
    std::optional<ProcessID> pid{};
    int depth = 0;
};

/// Goes through a tree from its top, which is at `depth`. `visit` receives a `Walked` and says whether to go
/// on below that element. Any thread.
template <class Visit>
void walkOthers(const Platform& platform, const AXElement& top, int depth, const Visit& visit) {
    const Accessibility& accessibility = platform.accessibility;
    const auto pid = accessibility.pid(top);
    const bool isOwn = pid && *pid == platform.processes.ownPID();
    const bool goesOn = visit(Walked{
        .element = isOwn ? nullptr : &top, .pid = pid ? std::optional(*pid) : std::nullopt, .depth = depth});
    if (isOwn || !goesOn) {
        return;
    }
    for (const AXElement& child : AX::children(accessibility, top)) {
        walkOthers(platform, child, depth + 1, visit);
    }
}

/// What other processes show of the Accessibility permission. What the system itself says may be wrong for as
/// long as a program runs: the entry of another build may still count, or a new one may not count yet.
namespace TrustEvidence {

/// Whom to ask, best first: the menu bar's host, and a few others in case it is busy. Main thread.
[[nodiscard]] std::vector<ProcessID> witnesses(const Platform& platform);

/// Whether the first of them that answers lets itself be read; nothing when none answers. Blocks for a few
/// messages; any thread.
[[nodiscard]] std::optional<bool> ask(const Platform& platform, const std::vector<ProcessID>& witnesses);

}  // namespace TrustEvidence

}  // namespace velko
