#pragma once

#include <optional>

#include "VelkoCore/Habits/AppUsage.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoEngine/Ports/Platform.h"

namespace velko::ProcessStats {

/// A process's cumulative CPU time and its memory footprint; nothing when it is gone, out of reach, or its
/// figures make no sense. Any thread.
[[nodiscard]] std::optional<ProcessSample> sample(const Platform& platform, ProcessID pid);

}  // namespace velko::ProcessStats
