#pragma once

#include <functional>
#include <optional>
#include <string>

#include "Velko/View/Node.h"
#include "VelkoCore/Layout/Section.h"

namespace velko {

struct FaceParts;

/// The pages of the settings, as trees of what holds now. Their controls act at once. All that `parts`
/// refers to outlives the trees.
namespace SettingsPages {

/// Which apps the list shows; without a section it shows all.
struct Filter {
    std::optional<Section> section;
    std::function<void(std::optional<Section>)> choose;
};

[[nodiscard]] view::Node menuBar(const FaceParts& parts, const Filter& filter);
[[nodiscard]] view::Node general(const FaceParts& parts);

/// Whether the system opens Velko at login, and why that did not work or has to wait.
[[nodiscard]] view::Node loginSwitch(const FaceParts& parts);

/// A control with an explanation right below it, which may be empty.
[[nodiscard]] view::Node explained(view::Node control, std::string what);

}  // namespace SettingsPages

}  // namespace velko
