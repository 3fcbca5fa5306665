#include <algorithm>
#include <utility>

#include "Scenarios/Acts/Acts.h"
#include "Scenarios/SampleApps.h"
#include "Simulator/Desktop/SimulatedDesktop.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "Velko/View/Tree.h"

namespace velko::script {

namespace {

using scenarios::World;

const Surfaces::Traits& traitsOf(const Step& step) {
    return Surfaces::traitsOf(Surfaces::kindNamed(step.word).value_or(Surfaces::Kind::note));
}

/// The node that the step names, if it can be used.
std::expected<const view::Node*, std::string> usable(const Step& step, World& world) {
    const view::Node* const content = surfaceOf(step, world).content();
    if (content == nullptr) {
        return std::unexpected("The " + step.word + " is not open.");
    }
    const view::Node* const node = view::find(*content, step.control);
    if (node == nullptr || !node->isEnabled) {
        return std::unexpected("The " + step.word + (node == nullptr ? " has no " : " does not let press ") +
                               step.control + ".");
    }
    return node;
}

/// That node, if the mouse can reach it. The click is a click outside for all other surfaces.
std::expected<const view::Node*, std::string> reach(const Step& step, World& world) {
    SimulatedMac& mac = world.mac();
    if (const auto node = usable(step, world); !node) {
        return node;
    }
    if (mac.statusItem.menu() != nullptr) {
        return std::unexpected("The broom's menu takes every click.");
    }
    mac.closeMenu();
    mac.surfaces.letGo();
    for (const Surfaces::Traits& passing : Surfaces::all()) {
        if (passing.isTransient() && passing.kind != traitsOf(step).kind) {
            mac.surfaces.surface(passing.kind).dismiss(Surface::Dismissal::clickOutside);
        }
    }
    return usable(step, world);  // what has closed may have changed this surface
}

/// The input that sets a control to a value.
struct InputFor {
    const std::string& value;

    [[nodiscard]] std::optional<view::Input> operator()(const view::Toggle&) const {
        const bool isOn = value == "on";
        return isOn || value == "off" ? std::optional(view::Input(isOn)) : std::nullopt;
    }
    [[nodiscard]] std::optional<view::Input> operator()(const view::Picker& picker) const {
        return at(std::ranges::find(picker.options, value) - picker.options.begin());
    }
    [[nodiscard]] std::optional<view::Input> operator()(const view::Pages& pages) const {
        return at(std::ranges::find(pages.tabs, value, &view::Pages::Tab::title) - pages.tabs.begin());
    }
    [[nodiscard]] std::optional<view::Input> operator()(const view::Disclosure&) const {
        const bool isOpen = value == "open";
        return isOpen || value == "closed" ? std::optional(view::Input(isOpen)) : std::nullopt;
    }
    [[nodiscard]] std::optional<view::Input> operator()(const view::SearchField&) const {
        return view::Input(value);
    }
    [[nodiscard]] std::optional<view::Input> operator()(const view::KeyRecorder&) const {
        const auto keys = Keys::parse(value);
        return keys ? std::optional(view::Input(*keys)) : std::nullopt;
    }
    [[nodiscard]] std::optional<view::Input> operator()(const view::List&) const {
        return view::Input(view::Selected{.rows = value.empty() ? view::RowIDs() : view::RowIDs{value}});
    }
    [[nodiscard]] std::optional<view::Input> operator()(const auto&) const { return std::nullopt; }

    [[nodiscard]] static std::optional<view::Input> at(std::int64_t place) { return view::Input(place); }
};

/// Chooses an enabled item by its title, in submenus too.
bool chooseByTitle(const view::Menu& menu, const std::string& title) {
    return std::ranges::any_of(menu, [&](const view::MenuItem& item) {
        if (item.isEnabled && item.action && item.title == title) {
            item.action();
            return true;
        }
        return item.isEnabled && chooseByTitle(item.submenu, title);
    });
}

bool hasTile(const Step& step, World& world) {
    bool isFound = false;
    if (const view::Node* const content = surfaceOf(step, world).content()) {
        view::walk(*content, [&](const view::Node& node) {
            const auto* const tile = std::get_if<view::Tile>(&node.content);
            isFound = isFound || (tile != nullptr && tile->bundleID == appOf(step));
        });
    }
    return isFound;
}

Done choose(const Step& step, World& world) {
    SimulatedMac& mac = world.mac();
    if (!mac.statusItem.chooseFromMenu(step.text.value_or(""))) {
        return std::unexpected("The broom's menu is not open, or has no such entry to choose.");
    }
    if (std::exchange(mac.application.isTerminating, false)) {
        world.quitVelko();
    }
    return {};
}

Done chooseIn(const Step& step, World& world) {
    const auto node = reach(step, world);
    if (!node) {
        return std::unexpected(node.error());
    }
    return chooseByTitle(view::menuOf(**node, step.control), step.text.value_or(""))
               ? Done()
               : std::unexpected("The menu of " + step.control + " has no such entry to choose.");
}

Done openMenuIn(const Step& step, World& world) {
    const auto node = reach(step, world);
    if (!node) {
        return std::unexpected(node.error());
    }
    if (view::menuOf(**node, step.control).empty()) {
        return std::unexpected(step.control + " has no menu.");
    }
    surfaceOf(step, world).inHand = true;
    return {};
}

Done press(const Step& step, World& world) {
    const auto node = reach(step, world);
    if (!node) {
        return std::unexpected(node.error());
    }
    const auto input =
        step.value ? std::visit(InputFor{*step.value}, (*node)->content) : std::optional(view::Input());
    return input && surfaceOf(step, world).perform(step.control, *input)
               ? Done()
               : std::unexpected(step.control + " can't be pressed like that.");
}

Done drag(const Step& step, World& world) {
    if (!hasTile(step, world)) {
        return std::unexpected("The " + step.word + " has no tile of " + step.app + ".");
    }
    surfaceOf(step, world).inHand = true;
    return {};
}

Done drop(const Step& step, World& world) {
    if (const auto node = reach(step, world); !node) {
        return std::unexpected(node.error());
    }
    if (!hasTile(step, world)) {
        return std::unexpected("The " + step.word + " has no tile of " + step.app + ".");
    }
    return surfaceOf(step, world).perform(step.control, appOf(step))
               ? Done()
               : std::unexpected(step.control + " takes no apps.");
}

/// "option+enter", "command+3"
std::optional<view::KeyPress> keyPressIn(std::string_view text) {
    using Key = view::KeyPress::Key;
    view::KeyPress pressed;
    for (const auto& [held, member] :
         {std::pair("option+", &view::KeyPress::option), std::pair("command+", &view::KeyPress::command)}) {
        if (text.starts_with(held)) {
            pressed.*member = true;
            text.remove_prefix(std::string_view(held).size());
        }
    }
    if (text.size() == 1 && text.front() >= '1' && text.front() <= '9') {
        pressed.key = Key::digit;
        pressed.digit = text.front() - '0';
        return pressed;
    }
    for (const auto& [name, key] : {std::pair("up", Key::up), std::pair("down", Key::down),
                                    std::pair("enter", Key::enter), std::pair("escape", Key::escape)}) {
        if (text == name) {
            pressed.key = key;
            return pressed;
        }
    }
    return std::nullopt;
}

Done pressKey(const Step& step, World& world) {
    SimulatedSurface& surface = surfaceOf(step, world);
    if (!surface.isOpen()) {
        return std::unexpected("The " + step.word + " is not open.");
    }
    if (!step.value) {
        surface.press({});
        return {};
    }
    const auto pressed = keyPressIn(*step.value);
    const view::Node* field = nullptr;
    view::walk(*surface.content(), [&](const view::Node& node) {
        field = std::holds_alternative<view::SearchField>(node.content) ? &node : field;
    });
    if (!pressed || field == nullptr) {
        return std::unexpected("The " + step.word + " has no field that listens to " + *step.value + ".");
    }
    return surface.perform(std::string(field->id), *pressed)
               ? Done()
               : std::unexpected("The field has no use for " + *step.value + ".");
}

Done close(const Step& step, World& world) {
    SimulatedSurface& surface = surfaceOf(step, world);
    if (!surface.isOpen()) {
        return std::unexpected("The " + step.word + " is not open.");
    }
    switch (traitsOf(step).form) {
        case Surfaces::Form::quietPanel: return std::unexpected("The " + step.word + " goes by itself.");
        case Surfaces::Form::panel:
        case Surfaces::Form::panelWithArrow: surface.press({.key = view::Shortcut::Key::escape}); break;
        case Surfaces::Form::window: surface.dismiss(Surface::Dismissal::closeButton); break;
    }
    return {};
}

constexpr auto faceVerbs = std::to_array<MacAct>({
    {Verb::pressKey, pressKey},
    {Verb::choose, choose},
    {Verb::chooseIn, chooseIn},
    {Verb::openMenuIn, openMenuIn},
    {Verb::press, press},
    {Verb::drag, drag},
    {Verb::drop, drop},
    {Verb::close, close},
});

}  // namespace

SimulatedSurface& surfaceOf(const Step& step, World& world) {
    return world.mac().surfaces.surface(traitsOf(step).kind);
}

std::span<const MacAct> faceActs() {
    return faceVerbs;
}

}  // namespace velko::script
