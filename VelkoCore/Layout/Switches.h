#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <variant>

#include "VelkoCore/Habits/Autopilot.h"
#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Layout/LayoutFormats.h"
#include "VelkoCore/Layout/Section.h"

namespace velko {

/// A setting that is on or off and that the layout keeps.
enum class Switch {
    popOutOnChange,
    showLiveActivities,
    autopilot,
    askAboutNewIcons,
    leaveNewIconsOut,
    searchInMenu,
    shelfWhenFull,
    presenting,
    revealOnHover
};

/// Where a switch is stored: in the layout or in one of its parts, or in an export. Nothing: nowhere.
using SwitchMember =
    std::variant<std::monostate, bool Layout::*, bool AutopilotState::*, bool RevealSettings::*,
                 bool LayoutExport::*, std::optional<bool> LayoutExport::*>;

/// All that differs from switch to switch. The rows drive the layout file, the export file, the settings, the
/// verbs of scenarios, and what the soak test expects of the log.
///
/// A new switch is a member of `Layout` (and of `LayoutExport`, if it travels to another Mac), a value and a
/// row here, a control on a page of the settings, and its verb in docs/simulator.md.
struct SwitchRow {
    Switch which;
    std::string_view key;   ///< in the files, within the object of the part that stores it
    std::string_view name;  ///< in scenarios ("set pop-out on"), and the id of its control in the settings
    std::string_view
        words;  ///< the log says them before the value; empty: the line of `RevealSettings` tells
    SwitchMember stored;
    SwitchMember
        exported;  ///< an optional: files of older builds lack it; nothing: its part travels as a whole
    /// Older builds did not have it: the files name it only while it differs from its default in `Layout`,
    /// and a wrong value there counts as missing.
    bool isAddition = false;
};

namespace Switches {

inline constexpr std::array all{
    SwitchRow{.which = Switch::popOutOnChange,
              .key = "popOutOnChange",
              .name = "pop-out",
              .words = "pop out on change",
              .stored = &Layout::popOutOnChange,
              .exported = &LayoutExport::popOutOnChange},
    SwitchRow{.which = Switch::showLiveActivities,
              .key = "showLiveActivities",
              .name = "live-activities",
              .words = "show Live Activities",
              .stored = &Layout::showLiveActivities,
              .exported = &LayoutExport::showLiveActivities},
    SwitchRow{.which = Switch::autopilot,
              .key = "enabled",
              .name = "autopilot",
              .words = "autopilot",
              .stored = &AutopilotState::enabled,
              .exported = {}},
    SwitchRow{.which = Switch::askAboutNewIcons,
              .key = "askAboutNewIcons",
              .name = "ask",
              .words = "ask about new icons",
              .stored = &Layout::askAboutNewIcons,
              .exported = &LayoutExport::askAboutNewIcons},
    SwitchRow{.which = Switch::leaveNewIconsOut,
              .key = "leaveNewIconsOut",
              .name = "leave-out",
              .words = "leave new icons out",
              .stored = &Layout::leaveNewIconsOut,
              .exported = &LayoutExport::leaveNewIconsOut,
              .isAddition = true},
    SwitchRow{.which = Switch::searchInMenu,
              .key = "searchInMenu",
              .name = "search-in-menu",
              .words = "search in the menu",
              .stored = &Layout::searchInMenu,
              .exported = {},
              .isAddition = true},
    SwitchRow{.which = Switch::shelfWhenFull,
              .key = "shelfWhenFull",
              .name = "shelf-when-full",
              .words = "shelf when the bar is full",
              .stored = &Layout::shelfWhenFull,
              .exported = &LayoutExport::shelfWhenFull,
              .isAddition = true},
    SwitchRow{.which = Switch::presenting,
              .key = "offersPresenting",
              .name = "presenting",
              .words = "offer presenting",
              .stored = &Layout::offersPresenting,
              .exported = &LayoutExport::offersPresenting,
              .isAddition = true},
    SwitchRow{.which = Switch::revealOnHover,
              .key = "hover",
              .name = "hover",
              .words = "",
              .stored = &RevealSettings::hover,
              .exported = {}},
};

/// The row of a switch.
[[nodiscard]] const SwitchRow& row(Switch which) noexcept;

/// The row with that name, or null.
[[nodiscard]] const SwitchRow* named(std::string_view name) noexcept;

[[nodiscard]] bool isOn(const Layout& layout, Switch which);
void set(Layout& layout, Switch which, bool on);

/// Writes the layout's switches into an export, as far as it has a member for them.
void copy(const Layout& from, LayoutExport& to);
/// Takes over the switches that an export carries.
void copy(const LayoutExport& from, Layout& to);

}  // namespace Switches

}  // namespace velko
