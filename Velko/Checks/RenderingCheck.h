#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Velko/View/Node.h"
#include "VelkoCore/Geometry.h"
#include "VelkoEngine/Contracts/Contracts.h"

/// Checks that a renderer does what the controllers rely on. Nothing becomes visible. Main thread.
namespace velko::RenderingCheck {

/// The view that a renderer has made for a node.
struct DrawnView {
    std::string id;
    std::string words;           ///< what VoiceOver says of it
    Size size;                   ///< points
    const void* view = nullptr;  ///< stays the same as long as it is the same view
};

/// Draws a tree in place of the one before, and returns the views of all nodes that have an id.
using Draw = std::function<std::vector<DrawnView>(const view::Node&)>;

/// Draws a tree with a control of every kind, and then the same controls in another order.
void check(const Draw& draw, Contracts::Checks& checks);

}  // namespace velko::RenderingCheck
