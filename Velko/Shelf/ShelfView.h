#pragma once

#include <functional>

#include "Velko/View/Node.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Layout/Section.h"

namespace velko {

class AppController;

struct ShelfViewRequest {
    AppController& controller;  ///< outlives the tree
    double height = 0;          ///< that there is room for, in points
    std::function<void(const BundleID&)> open;
    std::function<void(const BundleID&, Section)> move;
};

/// The shelf: a tile for each tucked app that is present, eight to a row; when buried apps are out as
/// well, each section has a group of its own, onto which tiles can be dragged.
[[nodiscard]] view::Node shelfView(const ShelfViewRequest& request);

}  // namespace velko
