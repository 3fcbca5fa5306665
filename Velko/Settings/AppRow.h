#pragma once

#include <string>
#include <vector>

#include "Velko/Settings/ListedApps.h"
#include "Velko/View/Menu.h"
#include "Velko/View/Node.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Time/Date.h"

namespace velko {

struct FaceParts;

/// The row of one app in the settings, and the menus about apps there. All that `parts` refers to outlives
/// them.
namespace AppRow {

/// A section as the settings call it: "Tucked".
[[nodiscard]] std::string titleOf(Section section);

/// "Clicked today", "Clicked 12 days ago"; empty for an app that was never clicked.
[[nodiscard]] std::string lastClickInWords(const ListedApp& app, Date now);

[[nodiscard]] view::Node make(const FaceParts& parts, const ListedApp& app);

/// What can be done with one app besides placing it.
[[nodiscard]] view::Menu moreMenu(const FaceParts& parts, const ListedApp& app);

/// The context menu of one app or of several.
[[nodiscard]] view::Menu contextMenu(const FaceParts& parts, const std::vector<ListedApp>& apps);

/// Shows the user where an app's icon is, or stops that; nothing happens where it can't be shown.
void showOrStop(const FaceParts& parts, const ListedApp& app);

}  // namespace AppRow

}  // namespace velko
