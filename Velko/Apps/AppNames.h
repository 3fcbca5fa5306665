#pragma once

#include <string>

#include "Velko/App/AppValues.h"
#include "VelkoCore/Identifiers.h"

namespace velko {

class Workspace;

/// An app's name for people, whether it is in the menu bar, only runs, or is only installed; its identifier
/// when this Mac does not know it.
[[nodiscard]] std::string nameOf(const AppValues& values, const Workspace& workspace,
                                 const BundleID& bundleID);

/// The name of an app that does not run; its identifier when it is not installed.
[[nodiscard]] std::string nameAtRest(const Workspace& workspace, const BundleID& bundleID);

}  // namespace velko
