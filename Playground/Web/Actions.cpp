#include "Playground/Web/Actions.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "Playground/Web/AppMenus.h"
#include "Playground/Web/Desktop.h"
#include "Playground/Web/Fields.h"
#include "Scenarios/Acts/Acts.h"
#include "Scenarios/SampleApps.h"
#include "Simulator/Desktop/SimulatedDialogs.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Velko/View/Tree.h"

namespace velko::web {

namespace {

constexpr std::int64_t fastest = 100'000;  ///< times real time

std::optional<Surfaces::Kind> surfaceIn(const Fields& fields) {
    return Surfaces::kindNamed(fields.text("surface").value_or(""));
}

SimulatedSurface* surfaceNamed(Session& session, const Fields& fields) {
    const auto kind = surfaceIn(fields);
    return kind ? &session.mac().surfaces.surface(*kind) : nullptr;
}

std::optional<view::KeyPress> keyIn(const Fields& fields) {
    using Key = view::KeyPress::Key;
    struct Name {
        std::string_view name;
        Key key;
    };
    const std::string name = fields.text("key").value_or("");
    if (name.size() == 1 && name.front() >= '1' && name.front() <= '9') {
        return view::KeyPress{.key = Key::digit, .digit = name.front() - '0', .command = true};
    }
    static constexpr std::array names{Name{"ArrowUp", Key::up}, Name{"ArrowDown", Key::down},
                                      Name{"Enter", Key::enter}, Name{"Escape", Key::escape}};
    const auto* const found = std::ranges::find(names, name, &Name::name);
    return found == names.end() ? std::nullopt
                                : std::optional(view::KeyPress{.key = found->key,
                                                               .shift = fields.flag("shift"),
                                                               .control = fields.flag("control"),
                                                               .option = fields.flag("option"),
                                                               .command = fields.flag("command")});
}

std::optional<view::Input> inputOf(const Fields& fields) {
    if (const auto rows = fields.texts("rows")) {
        return view::Input(view::Selected{.rows = view::RowIDs(rows->begin(), rows->end())});
    }
    if (const auto row = fields.text("row")) {
        return view::Input(view::Activated{.row = *row});
    }
    if (const auto key = fields.text("menuKey")) {
        return view::Input(view::MenuKey{.key = key->size() == 1 ? key->front() : '\0'});
    }
    const Json* const value = fields.find("value");
    if (value == nullptr) {
        return view::Input();
    }
    if (const auto* flag = std::get_if<bool>(&value->value)) {
        return view::Input(*flag);
    }
    if (const auto* text = std::get_if<std::string>(&value->value)) {
        return view::Input(*text);
    }
    const auto number = Fields::number(value);
    return number ? std::optional(view::Input(*number)) : std::nullopt;
}

Done performOnSurface(Session& session, const Fields& fields) {
    auto* surface = surfaceNamed(session, fields);
    const auto input = inputOf(fields);
    if (surface == nullptr || !input || !surface->perform(fields.text("id").value_or(""), *input)) {
        return std::unexpected("That control is gone or takes no such value.");
    }
    return {};
}

/// A key that the field has no use for is one for the whole surface.
Done pressInField(Session& session, const Fields& fields) {
    using Key = view::Shortcut::Key;
    auto* surface = surfaceNamed(session, fields);
    const auto pressed = keyIn(fields);
    if (surface == nullptr || !pressed) {
        return std::unexpected("That is no key of a field.");
    }
    if (surface->perform(fields.text("id").value_or(""), *pressed) || !pressed->isPlain()) {
        return {};
    }
    if (pressed->key == view::KeyPress::Key::enter) {
        surface->press({.key = Key::enter});
    } else if (pressed->key == view::KeyPress::Key::escape) {
        surface->press({.key = Key::escape});
    }
    return {};
}

/// Keys that a control of an open surface records.
Done recordKeys(Session& session, const Fields& fields) {
    auto* surface = surfaceNamed(session, fields);
    const auto keys = Keys::parse(fields.text("keys").value_or(""));
    return surface != nullptr && keys && surface->perform(fields.text("id").value_or(""), *keys)
               ? Done()
               : std::unexpected("Velko has no name for that key.");
}

Done openControlMenu(Session& session, const Fields& fields) {
    const auto* surface = surfaceNamed(session, fields);
    const auto id = fields.text("id").value_or("");
    const auto row = fields.text("row").value_or("");
    const auto* tree = surface == nullptr ? nullptr : surface->content();
    view::Menu menu = tree == nullptr ? view::Menu() : view::menuOf(*tree, id, row);
    if (menu.empty()) {
        return std::unexpected("That control has no menu.");
    }
    session.openControlMenu(
        {.anchor = "control:" + fields.text("surface").value_or("") + "/" + (row.empty() ? id : row),
         .items = std::move(menu),
         .surface = surfaceIn(fields)});
    return {};
}

Done choose(Session& session, const Fields& fields) {
    const auto place = fields.place("place");
    return place ? session.choose(*place) : std::unexpected("That is no place in a menu.");
}

Done dismiss(Session& session, const Fields& fields) {
    using Dismissal = Surface::Dismissal;
    auto* surface = surfaceNamed(session, fields);
    if (surface == nullptr || !surface->isOpen()) {
        return std::unexpected("That is not open.");
    }
    if (fields.text("how") == "closeButton") {
        surface->dismiss(Dismissal::closeButton);
    } else {
        surface->press({.key = view::Shortcut::Key::escape});
    }
    return {};
}

Done holdTile(Session& session, const Fields& fields) {
    if (auto* surface = surfaceNamed(session, fields)) {
        surface->inHand = fields.flag("held");
    }
    return {};
}

Done pressKey(Session& session, const Fields& fields) {
    if (auto* surface = surfaceNamed(session, fields)) {
        surface->press({});
    }
    return {};
}

/// The app that a step launches, if it runs already: on a Mac it then only comes to the front.
std::optional<ProcessID> alreadyLaunched(const script::Step& step, SimulatedMac& mac) {
    if (step.verb != script::Verb::launch) {
        return std::nullopt;
    }
    const auto pids = mac.workspace.pids(scenarios::bundleIDOf(step.app).value_or(step.app));
    return pids.empty() || pids.front() == mac.processes.ownPID() ? std::nullopt
                                                                  : std::optional(pids.front());
}

Done playLine(Session& session, const Fields& fields) {
    const auto parsed = script::parse(fields.text("line").value_or(""));
    if (!parsed) {
        return std::unexpected(parsed.error());
    }
    const std::optional<script::Step>& step = *parsed;
    if (!step) {
        return {};
    }
    if (step->verb == script::Verb::wait) {
        return session.jump(step->duration.value_or(std::chrono::milliseconds(0)));
    }
    if (const auto pid = alreadyLaunched(*step, session.mac())) {
        session.mac().activate(*pid);
        return {};
    }
    return script::perform(*step, session.world());
}

Done setPace(Session& session, const Fields& fields) {
    const auto speed = fields.number("speed");
    if (fields.flag("stop")) {
        session.stopJump();
    }
    if (speed && (*speed < 0 || *speed > fastest)) {
        return std::unexpected("That is no speed.");
    }
    if (speed) {
        session.setSpeed(static_cast<double>(*speed));
    }
    return {};
}

struct Action {
    std::string_view name;
    Done (*perform)(Session&, const Fields&);
};

constexpr std::array actions{
    Action{"act", performOnSurface},
    Action{"alert",
           [](Session& session, const Fields&) {
               session.readAlert();
               return Done();
           }},
    Action{"answer",
           [](Session& session, const Fields& fields) {
               session.mac().dialogs.answer(fields.flag("agreed"));
               return Done();
           }},
    Action{"app-key", pressAppKey},
    Action{"app-menu", openAppMenu},
    Action{"broom", clickBroom},
    Action{"choose", choose},
    Action{"click", clickDesktop},
    Action{"desk", playLine},
    Action{"dismiss", dismiss},
    Action{"drag", holdTile},
    Action{"field", pressInField},
    Action{"icon", clickIcon},
    Action{"key", pressKey},
    Action{"menu", openControlMenu},
    Action{"motion",
           [](Session& session, const Fields& fields) {
               session.mac().surfaces.reducedMotion = fields.flag("reduced");
               return Done();
           }},
    Action{"pace", setPace},
    Action{"panel", answerPanel},
    Action{"pointer", movePointer},
    Action{"settings",
           [](Session& session, const Fields&) {
               session.systemSettings().close(session.mac());
               return Done();
           }},
    Action{"record", recordKeys},
    Action{"restart", [](Session& session, const Fields&) { return session.startOver(); }},
};

}  // namespace

bool isAction(std::string_view action) {
    return std::ranges::find(actions, action, &Action::name) != actions.end();
}

Done act(Session& session, std::string_view action, const Json& body) {
    const auto* const found = std::ranges::find(actions, action, &Action::name);
    if (found == actions.end()) {
        return std::unexpected("There is no such action.");
    }
    Done done = found->perform(session, Fields(body));
    session.settle();
    return done;
}

}  // namespace velko::web
