#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Velko/App/FaceParts.h"
#include "Velko/Settings/ListedApps.h"
#include "Velko/View/Node.h"
#include "VelkoCore/Layout/Section.h"

namespace velko {

class MenuActions;

/// The settings' pages as trees of what holds now; their controls act on the controller at once.
namespace SettingsPages {

/// What the pages do besides working the controller. It outlives the trees.
struct Actions {
    MenuActions& menu;
    const std::function<void()>& sortAgain;
    const std::function<void()>& openPermission;
};

/// Which apps the list shows; all of them without a section.
struct Filter {
    std::optional<Section> section;
    std::function<void(std::optional<Section>)> choose;
};

[[nodiscard]] view::Node menuBar(const FaceParts& parts, const Filter& filter, const Actions& actions);
[[nodiscard]] view::Node general(const FaceParts& parts);
[[nodiscard]] view::Node about(const FaceParts& parts, const Actions& actions);

/// One line of the list of apps.
[[nodiscard]] view::Node appRow(AppController& controller, const ListedApp& app);

/// A switch with what it means right below it, which may be empty.
[[nodiscard]] view::Node explained(view::Node control, std::string what);

/// What keeps Velko from its work, each with its remedy; empty when nothing does.
[[nodiscard]] std::vector<view::Node> problems(const FaceParts& parts, const Actions& actions);

/// Velko's icon does not show in the menu bar, with the way to where that can be changed.
[[nodiscard]] view::Node iconOutOfSight(const Actions& actions);

}  // namespace SettingsPages

}  // namespace velko
