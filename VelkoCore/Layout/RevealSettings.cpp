#include "VelkoCore/Layout/RevealSettings.h"

#include <algorithm>

namespace velko {

std::int64_t RevealSettings::normalisedAutoTuck(std::int64_t seconds) noexcept {
    return seconds <= 0 ? 0 : std::clamp(seconds, shortestAutoTuck, longestAutoTuck);
}

}  // namespace velko
