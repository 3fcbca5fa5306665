#pragma once

#include <filesystem>
#include <iosfwd>

#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Sorting/SortSession.h"

namespace velko::playground {

/// Walks a session's cards, one key at a time from `keys`, and shows them on `screen`. Whether the user
/// went through with it: false when they left, or the keys came to an end.
[[nodiscard]] bool walkCards(SortSession& session, std::istream& keys, std::ostream& screen);

/// Sorts the playground's apps in the terminal and saves what was chosen. The process's exit status.
[[nodiscard]] int sortLayoutFile(Layout layout, const std::filesystem::path& layoutFile);

}  // namespace velko::playground
