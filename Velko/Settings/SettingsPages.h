#pragma once

#include <functional>
#include <vector>

#include "Velko/FaceParts.h"
#include "Velko/Settings/ListedApps.h"
#include "Velko/View/Node.h"

namespace velko {

class MenuActions;

/// The settings' pages as trees of what holds now; their controls act on the controller at once.
namespace SettingsPages {

[[nodiscard]] view::Node menuBar(const FaceParts& parts, const std::function<void()>& sortAgain);
[[nodiscard]] view::Node general(const FaceParts& parts);
/// `actions` outlives the tree.
[[nodiscard]] view::Node about(const FaceParts& parts, MenuActions& actions);

/// One line of the list of apps.
[[nodiscard]] view::Node appRow(AppController& controller, const ListedApp& app);

/// What keeps Velko from its work, each with its remedy; empty when nothing does. `actions` outlives it.
[[nodiscard]] std::vector<view::Node> problems(const FaceParts& parts, MenuActions& actions);

}  // namespace SettingsPages

}  // namespace velko
