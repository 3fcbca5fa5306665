#pragma once

#include <string>

#include "VelkoCore/Identifiers.h"
#include "VelkoEngine/Ports/Platform.h"

/// What Accessibility tells of the menu bar, written out for a person who looks for a fault.
namespace velko::Inventory {

/// An app's Accessibility tree as indented text, down to `maxDepth`. Any thread.
[[nodiscard]] std::string axDump(const Platform& platform, ProcessID pid, int maxDepth);

/// The tree of the menu bar's host as text. Any thread.
[[nodiscard]] std::string menuBarAgentDump(const Platform& platform);

}  // namespace velko::Inventory
