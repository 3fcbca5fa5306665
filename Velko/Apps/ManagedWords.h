#pragma once

#include <string>

#include "VelkoCore/Identifiers.h"

namespace velko {

class Log;
struct AppValues;
struct ManagedLayout;

/// What people read beside everything that the organisation has decided.
inline constexpr auto managedInWords = "Managed by your organisation";

/// How much is managed: "2 apps and 1 setting".
[[nodiscard]] std::string inWords(const ManagedLayout& managed);

/// Those of the apps whose place the user may change. The others are logged: they stay where they are.
[[nodiscard]] BundleIDs withoutManaged(const AppValues& values, const BundleIDs& apps, Log& log);

}  // namespace velko
