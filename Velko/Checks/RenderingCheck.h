#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Velko/View/Node.h"
#include "VelkoCore/Geometry.h"
#include "VelkoEngine/Contracts/Contracts.h"

/// Holds a renderer to what the controllers rely on, without showing anything. Main thread.
namespace velko::RenderingCheck {

/// What has been made of a node.
struct DrawnView {
    std::string id;
    std::string words;           ///< what VoiceOver says of it
    Size size;                   ///< points
    const void* view = nullptr;  ///< the same for as long as it is the same view
};

/// Draws a tree in the place of the last one; everything in it that has an id.
using Draw = std::function<std::vector<DrawnView>(const view::Node&)>;

/// Draws a tree with a control of every kind, then the same controls in another order.
void check(const Draw& draw, Contracts::Checks& checks);

}  // namespace velko::RenderingCheck
