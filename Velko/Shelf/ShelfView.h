#pragma once

#include <functional>
#include <string>

#include "Velko/App/FaceParts.h"
#include "Velko/View/Node.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Layout/Section.h"

namespace velko {

/// What the shelf shows, and what the user does in it.
struct ShelfViewRequest {
    FaceParts parts;    ///< outlives the tree
    double height = 0;  ///< how high the shelf may be, in points
    std::string typed;  ///< only apps whose names fit this are shown
    std::function<void(const std::string&)> onType;
    std::function<void(const BundleID&)> onOpen;           ///< the user wants an app's menu
    std::function<void(const BundleID&, Section)> onMove;  ///< the user moves an app to another section
};

/// A tile for each tucked app that is present, eight to a row. When buried apps are out as well, each section
/// has a group of its own. Tiles can be dragged from one section to the other, and to the bar.
[[nodiscard]] view::Node shelfView(const ShelfViewRequest& request);

}  // namespace velko
