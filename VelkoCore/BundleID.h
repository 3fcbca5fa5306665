#pragma once

#include <set>
#include <string>

namespace velko {

/// An app's bundle identifier: the key of every per-app table. Ordered by its bytes.
using BundleID = std::string;

using BundleIDs = std::set<BundleID>;

}  // namespace velko
