#include "VelkoCore/Layout/Switches.h"

#include <algorithm>
#include <utility>

namespace velko {

namespace {

/// The place of a switch in a layout, which may be constant; null where the row names none there.
template <class SomeLayout>
class PlaceIn {
 public:
    explicit PlaceIn(SomeLayout& layout) noexcept : layout_(layout) {}

    auto* operator()(bool Layout::* member) const noexcept { return &(layout_.*member); }
    auto* operator()(bool AutopilotState::* member) const noexcept { return &(layout_.autopilot.*member); }
    auto* operator()(bool RevealSettings::* member) const noexcept { return &(layout_.reveal.*member); }
    template <class Elsewhere>
    decltype(&(std::declval<SomeLayout&>().popOutOnChange)) operator()(Elsewhere /*member*/) const noexcept {
        return nullptr;
    }

 private:
    SomeLayout& layout_;
};

/// Writes one switch into an export.
struct Export {
    LayoutExport& to;
    bool on;
    bool isNamed;  ///< files name it: older builds had it, or it differs from its default

    void operator()(bool LayoutExport::* member) const noexcept { to.*member = on; }
    void operator()(std::optional<bool> LayoutExport::* member) const noexcept {
        to.*member = isNamed ? std::optional(on) : std::nullopt;
    }
    template <class Elsewhere>
    void operator()(Elsewhere /*member*/) const noexcept {}
};

/// What an export says of one switch; nothing when it does not carry it.
struct Import {
    const LayoutExport& from;

    std::optional<bool> operator()(bool LayoutExport::* member) const noexcept { return from.*member; }
    std::optional<bool> operator()(std::optional<bool> LayoutExport::* member) const noexcept {
        return from.*member;
    }
    template <class Elsewhere>
    std::optional<bool> operator()(Elsewhere /*member*/) const noexcept {
        return std::nullopt;
    }
};

}  // namespace

const SwitchRow& Switches::row(Switch which) noexcept {
    return *std::ranges::find(all, which, &SwitchRow::which);
}

const SwitchRow* Switches::named(std::string_view name) noexcept {
    const auto* const found = std::ranges::find(all, name, &SwitchRow::name);
    return found == all.end() ? nullptr : found;
}

bool Switches::isOn(const Layout& layout, Switch which) {
    const bool* const place = std::visit(PlaceIn(layout), row(which).stored);
    return place != nullptr && *place;
}

void Switches::set(Layout& layout, Switch which, bool on) {
    if (bool* const place = std::visit(PlaceIn(layout), row(which).stored)) {
        *place = on;
    }
}

void Switches::copy(const Layout& from, LayoutExport& to) {
    const Layout fresh;
    for (const SwitchRow& each : all) {
        const bool on = isOn(from, each.which);
        const bool isNamed = !each.isAddition || on != isOn(fresh, each.which);
        std::visit(Export{to, on, isNamed}, each.exported);
    }
}

void Switches::copy(const LayoutExport& from, Layout& to) {
    for (const SwitchRow& each : all) {
        if (const auto on = std::visit(Import{from}, each.exported)) {
            set(to, each.which, *on);
        }
    }
}

}  // namespace velko
