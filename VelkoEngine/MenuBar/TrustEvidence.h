#pragma once

#include <optional>
#include <vector>

#include "VelkoCore/Identifiers.h"
#include "VelkoEngine/Ports/Platform.h"

/// What other processes say of the Accessibility permission, which the system may report wrongly for as long
/// as a program runs: an entry of another build still counts, or a new one does not yet.
namespace velko::TrustEvidence {

/// Whom to ask, best first: the menu bar's host, and a few others in case it is busy. Main thread.
[[nodiscard]] std::vector<ProcessID> witnesses(const Platform& platform);

/// Whether the first of them that answers lets itself be read; nothing when none answers. Blocks for a few
/// messages; any thread.
[[nodiscard]] std::optional<bool> ask(const Platform& platform, const std::vector<ProcessID>& witnesses);

}  // namespace velko::TrustEvidence
