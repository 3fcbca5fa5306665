#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "VelkoCore/Geometry.h"

/// Judges how a renderer has laid out a tree. Pure functions over measured frames.
namespace velko::LayoutAudit {

/// A view of a node, as measured.
struct Measured {
    std::string id;
    std::optional<std::size_t> parent{};  ///< its place in the list, before this one; absent: the root
    Rect frame{};                         ///< in the root: origin at the top left, y grows downwards
    Size needed{};             ///< the room that its words need; zero in a direction that does not matter
    bool isAmbiguous = false;  ///< the layout engine could place it in another way too
    bool clips = false;        ///< what it contains may be larger: it scrolls

    bool operator==(const Measured&) const = default;
};

/// What is wrong, a sentence for each view and fault.
[[nodiscard]] std::vector<std::string> faults(const std::vector<Measured>& views);

/// What is different after the same tree was shown once more.
[[nodiscard]] std::vector<std::string> differences(const std::vector<Measured>& before,
                                                   const std::vector<Measured>& after);

}  // namespace velko::LayoutAudit
