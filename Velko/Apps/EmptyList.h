#pragma once

#include <string>

namespace velko {

struct AppValues;

/// Why there is no app to show or to sort, in words for the user.
[[nodiscard]] std::string whyNoApps(const AppValues& values);

}  // namespace velko
