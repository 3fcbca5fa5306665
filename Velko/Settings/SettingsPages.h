#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Velko/View/Node.h"

namespace velko {

class AppList;
class EarlierLayoutsWindow;
class KeysPage;
class MenuActions;
class PresentingPage;
struct FaceParts;

/// The pages of the settings, as trees of what holds now. Their controls act at once. All that `parts`
/// refers to outlives the trees.
namespace SettingsPages {

/// What pages are made of. All of it outlives the trees.
struct Context {
    const FaceParts& parts;
    MenuActions& actions;
    AppList& apps;
    KeysPage& keys;
    PresentingPage& presenting;
    EarlierLayoutsWindow& earlier;
};

/// A page, and its tab. A new page is a row in `all`.
struct Page {
    std::string_view name;  ///< for the user's defaults: Velko remembers the page that was open last
    std::string_view title;
    std::string_view symbol;
    view::Node (*make)(const Context&);
};

[[nodiscard]] std::span<const Page> all();

[[nodiscard]] view::Node menuBar(const Context& context);
[[nodiscard]] view::Node general(const Context& context);
[[nodiscard]] view::Node about(const Context& context);

/// Whether the system opens Velko at login, and why that did not work or has to wait.
[[nodiscard]] view::Node loginSwitch(const FaceParts& parts);

/// A number that the user picks among those that are offered, in ascending order. One that holds now and is
/// not among them is offered too.
struct NumberChoice {
    std::string id;
    std::string title;
    std::vector<std::int64_t> offered;
    std::int64_t now = 0;
    std::function<std::string(std::int64_t)> inWords;
    std::function<void(std::int64_t)> choose;
};

[[nodiscard]] view::Node numberPicker(NumberChoice choice);

/// A control that the user can't use where the organisation has decided, and that says so.
[[nodiscard]] view::Node managed(view::Node control, bool isManaged);

/// Part of a page, which scrolls where a display is too small for all of it. `label` is for VoiceOver.
[[nodiscard]] view::Node scrolling(std::string id, std::string label, view::Node content);

/// A control with an explanation right below it, which may be empty.
[[nodiscard]] view::Node explained(view::Node control, std::string what);

}  // namespace SettingsPages

}  // namespace velko
