#pragma once

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Velko/View/Tree.h"

namespace velko {

/// Checks what must hold of every tree that a user sees.
inline void audit(const view::Node& root) {
    EXPECT_EQ(faultIn(root), std::nullopt);
}

/// The tree as VoiceOver reads it, line by line, with brackets around what can't be used.
inline std::vector<std::string> reading(const view::Node& root) {
    audit(root);
    std::vector<std::string> lines;
    view::walk(root, [&](const view::Node& node) {
        if (const std::string line = view::spoken(node); !line.empty()) {
            lines.push_back(node.isEnabled ? line : "(" + line + ")");
        }
    });
    return lines;
}

}  // namespace velko
