#include "tests/Soak/Monkey.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <map>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "Velko/View/Tree.h"
#include "tests/Soak/Walk.h"

namespace velko::soak {

namespace {

using script::Step;
using script::Verb;

std::optional<Step> oneOf(const Steps& steps, const Below& below) {
    return steps.empty() ? std::nullopt : std::optional(steps[below(steps.size())]);
}

/// What can be chosen. Quitting is left out, because it is an event of its own.
void addEntries(std::vector<std::string>& titles, const view::Menu& menu) {
    for (const view::MenuItem& item : menu) {
        if (item.isEnabled && item.action && item.title != "Quit Velko") {
            titles.push_back(item.title);
        }
        addEntries(titles, item.submenu);
    }
}

Steps choices(const view::Menu& menu, const Step& without) {
    std::vector<std::string> titles;
    addEntries(titles, menu);
    Steps steps;
    for (std::string& title : titles) {
        steps.push_back(without);
        steps.back().text = std::move(title);
    }
    return steps;
}

/// All that a control can be set to.
struct ValuesOf {
    using Values = std::vector<std::string>;

    [[nodiscard]] Values operator()(const view::Toggle& toggle) const { return {toggle.isOn ? "off" : "on"}; }
    [[nodiscard]] Values operator()(const view::Picker& picker) const { return picker.options; }
    [[nodiscard]] Values operator()(const view::Pages& pages) const {
        Values titles;
        std::ranges::transform(pages.tabs, std::back_inserter(titles), &view::Pages::Tab::title);
        return titles;
    }
    [[nodiscard]] Values operator()(const view::Disclosure& disclosure) const {
        return {disclosure.isOpen ? "closed" : "open"};
    }
    [[nodiscard]] Values operator()(const view::SearchField&) const { return {"a", "do", "\u00FC", ""}; }
    [[nodiscard]] Values operator()(const view::KeyRecorder& recorder) const {
        return recorder.isRecording ? Values{"control+option+k", "control+option+m", "k", "\u238b", "\u232b"}
                                    : Values();
    }
    [[nodiscard]] Values operator()(const view::List& list) const {
        Values rows{""};
        for (const view::Node& row : list.children) {
            if (row.isEnabled) {
                rows.push_back(row.id);
            }
        }
        return rows;
    }
    [[nodiscard]] Values operator()(const auto&) const { return {}; }
};

/// Everything that can be done with one node of a surface.
Steps waysToWork(const view::Node& node, const view::Node& root, const std::string& surface) {
    const Step press{.verb = Verb::press, .word = surface, .control = node.id};
    Steps steps;
    if (std::holds_alternative<view::Button>(node.content) ||
        std::holds_alternative<view::KeyRecorder>(node.content) ||
        std::holds_alternative<view::Tile>(node.content)) {
        steps.push_back(press);
    }
    for (std::string& value : std::visit(ValuesOf{}, node.content)) {
        steps.push_back(press);
        steps.back().value = std::move(value);
    }
    for (Step& step : choices(view::menuOf(root, node.id),
                              {.verb = Verb::chooseIn, .word = surface, .control = node.id})) {
        steps.push_back(std::move(step));
    }
    const auto* const group = std::get_if<view::Group>(&node.content);
    if (group != nullptr && group->drop) {
        view::walk(root, [&](const view::Node& each) {
            if (const auto* tile = std::get_if<view::Tile>(&each.content)) {
                steps.push_back(
                    {.verb = Verb::drop, .app = tile->bundleID, .word = surface, .control = node.id});
            }
        });
    }
    return steps;
}

/// The kind of a control, which is what its id begins with: every app of a list has the same ones.
std::string kindOf(const view::Node& node) {
    return node.id.substr(0, node.id.find(':'));
}

/// Chooses a kind of control, then a control of that kind, then one way to use it. At each stage all choices
/// are equally likely.
std::optional<Step> work(const view::Node& root, const std::string& surface, const Below& below) {
    std::map<std::string, std::vector<Steps>> controls;
    view::walk(root, [&](const view::Node& node) {
        if (auto ways = node.isEnabled ? waysToWork(node, root, surface) : Steps(); !ways.empty()) {
            controls[kindOf(node)].push_back(std::move(ways));
        }
    });
    if (controls.empty()) {
        return std::nullopt;
    }
    const auto& ofOneKind =
        std::next(controls.begin(), static_cast<std::ptrdiff_t>(below(controls.size())))->second;
    return oneOf(ofOneKind[below(ofOneKind.size())], below);
}

}  // namespace

std::optional<Step> playfulStep(scenarios::World& world, const Below& below) {
    SimulatedMac& mac = world.mac();
    if (const view::Menu* menu = mac.statusItem.menu(); menu != nullptr && below(4) != 0) {
        return oneOf(choices(*menu, {.verb = Verb::choose}), below);
    }
    std::vector<std::pair<std::string, const view::Node*>> open;
    for (const Surfaces::Traits& traits : Surfaces::all()) {
        if (const view::Node* content = mac.surfaces.surface(traits.kind).content()) {
            open.emplace_back(traits.name, content);
        }
    }
    const std::size_t chance = below(16);
    if (chance < 10 && !open.empty()) {
        const auto& [name, content] = open[below(open.size())];
        return work(*content, name, below);
    }
    if (chance == 10 && !open.empty()) {
        return Step{.verb = Verb::close, .word = open[below(open.size())].first};
    }
    if (chance < 13) {
        const Verb click = below(2) == 0 ? Verb::rightClickBroom : Verb::controlClickBroom;
        return Step{.verb = click, .flag = below(4) == 0};
    }
    constexpr std::array places{"broom", "bar", "shelf", "desktop"};
    return Step{.verb = Verb::pointAt, .word = places.at(below(places.size()))};
}

}  // namespace velko::soak
