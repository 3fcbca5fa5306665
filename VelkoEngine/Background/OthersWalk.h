#pragma once

#include <optional>

#include "VelkoCore/Identifiers.h"
#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Processes.h"

namespace velko {

/// One element of a walk.
struct Walked {
    /// Null for an element of this very process: whatever it is asked, it would answer within the call, on
    /// the asking thread, though it belongs to the main one.
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

}  // namespace velko
