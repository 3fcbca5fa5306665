#include "Velko/Ports/Surfaces.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace velko {

namespace {

using Kind = Surfaces::Kind;
using Form = Surfaces::Form;

constexpr auto surfaceTable = std::to_array<Surfaces::Traits>({
    {Kind::note, "note", Form::panelWithArrow, "A note from Velko"},
    {Kind::shelf, "shelf", Form::panel, "Velko's shelf"},
    {Kind::setup, "setup", Form::window, ""},
    {Kind::permissionGuide, "guide", Form::quietPanel, "Velko's guide"},
    {Kind::settings, "settings", Form::window, "Velko Settings"},
});

consteval bool isInOrderOfKinds() {
    for (std::size_t index = 0; index < surfaceTable.size(); ++index) {
        if (static_cast<std::size_t>(surfaceTable.at(index).kind) != index) {
            return false;
        }
    }
    return true;
}
static_assert(isInOrderOfKinds());

}  // namespace

std::span<const Surfaces::Traits> Surfaces::all() noexcept {
    return surfaceTable;
}

const Surfaces::Traits& Surfaces::traitsOf(Kind kind) noexcept {
    return all()[static_cast<std::size_t>(kind)];
}

std::optional<Surfaces::Kind> Surfaces::kindNamed(std::string_view name) noexcept {
    const auto* const found = std::ranges::find(surfaceTable, name, &Traits::name);
    return found == surfaceTable.end() ? std::nullopt : std::optional(found->kind);
}

}  // namespace velko
