#include "Scenarios/Rules/FaceRules.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <set>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "Simulator/Desktop/SimulatedDesktop.h"
#include "Simulator/Desktop/SimulatedHotKeys.h"
#include "Simulator/Desktop/SimulatedPointer.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/MenuBar/SimulatedMenuBar.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/App/AppController.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Broom/BroomIcon.h"
#include "Velko/Flows/GlobalKeys.h"
#include "Velko/Flows/Questions.h"
#include "Velko/Ports/Panels.h"
#include "Velko/View/Tree.h"
#include "VelkoCore/Layout/Switches.h"
#include "VelkoCore/Search/AppSearch.h"
#include "VelkoCore/Time/Timing.h"

namespace velko::scenarios {

namespace {

using Kind = Surfaces::Kind;

/// Twenty while it rocks, and some more for its dot and for a problem.
constexpr std::size_t mostImagesInASecond = 23;

std::string expectedToolTip(AppController& velko) {
    const AppValues& values = velko.values();
    if (!values.health().isOk()) {
        return "Velko needs attention. Right-click for details.";
    }
    if (values.isRefused) {
        return "macOS didn't let Velko hide icons, so all of them are out. Try again in Settings.";
    }
    if (velko.note().isAnythingToAsk() && !values.noteDeferred) {
        return "Velko has something to ask. Click to see.";
    }
    if (values.isPresenting()) {
        return "Presenting: only the icons that you chose show. Click for the menu.";
    }
    if (values.isOnWideDisplay && !values.showingMe) {
        return "Nothing is hidden on this wide display. Click for the menu.";
    }
    if (values.liveActivityShowing && !values.liveActivityDismissed) {
        return "An iPhone Live Activity is on, so everything's out. Click to tidy anyway.";
    }
    return values.state.isRevealed() ? "Click to tidy up"
                                     : "Click to show tucked icons. Right-click for more.";
}

/// A suggestion may come or go only because time passes, and Velko looks for that once an hour.
bool mayLag(const AppController& velko) {
    const Layout& layout = velko.values().layout;
    return layout.inbox.empty() && layout.autopilot.offerPending;
}

bool hasDot(const view::Drawing& drawing) {
    return drawing.shapes.size() == BroomDrawing::icon({.hasDot = true}).shapes.size();
}

/// How long the newest image of the broom may wait until it is drawn.
constexpr auto drawingTime = std::chrono::milliseconds(60);

/// The apps of all nodes whose ids begin like that.
std::vector<BundleID> appsWith(std::string_view prefix, const view::Node& root) {
    std::vector<BundleID> apps;
    view::walk(root, [&](const view::Node& node) {
        if (node.id.starts_with(prefix)) {
            apps.push_back(node.id.substr(prefix.size()));
        }
    });
    std::ranges::sort(apps);
    return apps;
}

bool showsBuried(const RevealState& state) {
    const auto* const peek = state.asPeeking();
    return peek == nullptr ? state == RevealState::revealedWithBuried() : showsBuried(peek->base);
}

}  // namespace

void FaceRules::require(bool holds, const std::string& rule, const std::string& detail) {
    if (!holds && !breach_) {
        breach_ = detail.empty() ? rule : rule + ": " + detail;
    }
}

std::optional<std::string> FaceRules::check(AppController& velko, bool isCalm) {
    checkTrees();
    checkBroom(velko, isCalm);
    checkSurfaces(velko, isCalm);
    checkNote(velko, isCalm);
    checkShelf(velko, isCalm);
    checkSettings(velko);
    checkSearch(velko);
    checkKeys(velko);
    return std::exchange(breach_, std::nullopt);
}

void FaceRules::checkTrees() {
    for (const Surfaces::Traits& traits : Surfaces::all()) {
        if (const view::Node* root = content(traits.kind)) {
            const auto* const opening = world_.mac().surfaces.surface(traits.kind).opening();
            require(!opening->title.empty(), "every surface has a title");
            const auto fault = faultIn(*root);
            require(!fault, "everything shown is well-formed", fault.value_or(""));
        }
    }
    if (const view::Menu* menu = world_.mac().statusItem.menu()) {
        const auto fault = faultIn(*menu);
        require(!fault, "the menu is well-formed", fault.value_or(""));
    }
}

void FaceRules::checkBroom(AppController& velko, bool isCalm) {
    const SimulatedStatusItem& item = world_.mac().statusItem;
    require(item.mostImagesInASecond() <= mostImagesInASecond && item.imagesInVain() == 0,
            "the broom is drawn no more than it has to be");
    require(mayLag(velko) || item.toolTip() == expectedToolTip(velko), "the broom's tooltip is true",
            item.toolTip() + " instead of " + expectedToolTip(velko));
    const auto* const drawing = std::get_if<view::Drawing>(&item.image());
    const bool isOk = velko.values().health().isOk();
    require((drawing != nullptr) == isOk, "the broom shows whether all is well");
    if (drawing == nullptr || !isOk) {
        return;
    }
    const bool asks = velko.note().isAnythingToAsk();
    const auto now = world_.mac().mainThread.now();
    dotWrongSince_ = hasDot(*drawing) == asks ? std::nullopt : std::optional(dotWrongSince_.value_or(now));
    require(mayLag(velko) || !dotWrongSince_ || now - *dotWrongSince_ <= drawingTime,
            "the dot shows whether there is something to ask");
    const double tilt = velko.values().state.isRevealed() ? Timing::broomRockDegrees : 0;
    const view::Drawing right =
        BroomDrawing::icon({.tilt = tilt, .hasDot = asks, .isPresenting = velko.values().isPresenting()});
    require(!isCalm || mayLag(velko) || *drawing == right, "the broom leans as the icons are");
}

void FaceRules::checkSurfaces(const AppController& velko, bool isCalm) {
    const SimulatedMac& mac = world_.mac();
    const bool hasWindow = mac.surfaces.isWindowOpen();
    require((mac.application.policy() == Application::Policy::regular) == hasWindow,
            "Velko is in the Dock while it has a window");
    require(mac.statusItem.menu() == nullptr || !isOpen(Kind::note),
            "a menu and the note are never open together");
    require(!isOpen(Kind::permissionGuide) || hasWindow, "the guide goes with the window that asked for it");
    require(!isCalm || !isOpen(Kind::permissionGuide) || velko.values().problems.trustMissing,
            "the guide goes when there is nothing left to grant");
    require((mac.pointer.moveObservers() > 0) == velko.values().layout.reveal.hover,
            "the pointer is watched only for hovering");
}

void FaceRules::checkNote(const AppController& velko, bool isCalm) {
    const view::Node* const note = content(Kind::note);
    if (note == nullptr) {
        return;
    }
    require(!velko.values().isPresenting(), "an audience sees no questions");
    auto waiting = velko.values().layout.inbox;
    std::ranges::sort(waiting);
    require(appsWith("keep:", *note) == waiting, "the note asks about those who wait");
    checkArrow(isCalm);
    const bool asks = !appsWith("row:", *note).empty();
    require(asks == (view::find(*note, "spotless") == nullptr), "the note is spotless when all is answered");
}

void FaceRules::checkArrow(bool isCalm) {
    SimulatedMac& mac = world_.mac();
    const SimulatedSurface& note = mac.surfaces.surface(Kind::note);
    const auto place = note.opening()->place;
    require(place.has_value(), "the note hangs from the menu bar");
    const auto& slots = mac.menuBar().slots();
    const auto broom = std::ranges::find(slots, mac.processes.ownPID(), &SimulatedMenuBar::Slot::pid);
    const auto shown = note.frame();
    if (!place || !shown || !isCalm || mac.broomSpot() != BroomSpot::bar || broom == slots.end() ||
        mac.displays.displays().empty()) {
        return;
    }
    // Without the permission, or where it can't work, Velko does not learn that its icon has moved.
    const HealthFacts& problems = world_.velko()->values().problems;
    if (problems.trustMissing || problems.engineUnavailable) {
        return;
    }
    const Rect& frame = *shown;
    const double middle = broom->frame.x + broom->frame.width / 2;
    const bool isInReach = std::abs(middle - (frame.x + frame.width / 2)) <= panelArrowReach(frame.width);
    const double tip = frame.x + panelArrowTip(*place, frame);
    require(!isInReach || std::abs(tip - middle) < 1, "the note's arrow points at the broom");
}

void FaceRules::checkShelf(const AppController& velko, bool isCalm) {
    const AppValues& values = velko.values();
    const std::vector<Display> displays = world_.mac().displays.displays();
    require(isOpen(Kind::shelf) == (values.isShelfShown() && !displays.empty()),
            "the shelf is open while icons are out on it", describe(values.state));
    const view::Node* const shelf = content(Kind::shelf);
    if (shelf == nullptr) {
        return;
    }
    const HiddenApps hidden = hiddenApps(velko);
    std::vector<BundleID> wanted;
    const auto add = [&wanted](const std::vector<PresentApp>& apps) {
        std::ranges::transform(apps, std::back_inserter(wanted), &PresentApp::bundleID);
    };
    add(hidden.tucked);
    if (showsBuried(values.state)) {
        add(hidden.buried);
    }
    std::ranges::sort(wanted);
    const view::Node* const field = view::find(*shelf, "find");
    const auto* const search = field == nullptr ? nullptr : std::get_if<view::SearchField>(&field->content);
    const auto shown = appsWith("tile:", *shelf);
    const bool isPart = search != nullptr && !search->text.empty() && std::ranges::includes(wanted, shown);
    require(isPart || shown == wanted, "the shelf holds what is hidden");
    const auto frame = world_.mac().surfaces.surface(Kind::shelf).frame();
    const bool hangsSomewhere =
        frame && std::ranges::any_of(displays, [&](const Display& display) {
            return display.frame.contains({.x = frame->x + frame->width / 2, .y = frame->maxY() - 1});
        });
    require(!isCalm || hangsSomewhere, "the shelf hangs on a display that is there");
}

void FaceRules::checkSearch(const AppController& velko) {
    const view::Node* const search = content(Kind::search);
    if (search == nullptr) {
        return;
    }
    const auto& field = std::get<view::SearchField>(view::find(*search, "field")->content);
    std::vector<BundleID> wanted;
    for (const PresentApp& app : presentApps(velko.values())) {
        if (canBePlaced(velko, app.bundleID) && AppSearch::match(field.text, app.name)) {
            wanted.push_back(app.bundleID);
        }
    }
    std::ranges::sort(wanted);
    require(appsWith("app:", *search) == wanted, "the search finds every app that matches");
}

/// While a key is recorded, or the broom's menu is open, Velko has none.
void FaceRules::checkKeys(AppController& velko) {
    const view::Node* const settings = content(Kind::settings);
    const bool isPaused =
        (settings != nullptr && view::recorderIn(*settings)) || world_.mac().statusItem.menu() != nullptr;
    std::set<KeyCombination> wanted;
    for (const HotKeyRow& row : hotKeyActions) {
        const auto keys = velko.keys().keysOf(row.action);
        const bool isOffered = velko.keys().isOffered(row.action);
        if (keys && isOffered && !isPaused && !velko.values().keyFaults.contains(row.action)) {
            wanted.insert(*keys);
        }
    }
    require(world_.mac().hotKeys.registered() == wanted, "Velko has the keys that the user has chosen");
}

void FaceRules::checkSettings(const AppController& velko) {
    const view::Node* const settings = content(Kind::settings);
    if (settings == nullptr) {
        return;
    }
    const Layout& layout = velko.values().layout;
    for (const SwitchRow& row : Switches::all) {
        const view::Node* const node = view::find(*settings, row.name);
        const auto* const toggle = node == nullptr ? nullptr : std::get_if<view::Toggle>(&node->content);
        require(toggle == nullptr || toggle->isOn == Switches::isOn(layout, row.which),
                "the settings show what is set", std::string(row.name));
    }
    for (const BundleID& app : appsWith("section:", *settings)) {
        const view::Node* const node = view::find(*settings, "section:" + app);
        const auto* const picker = std::get_if<view::Picker>(&node->content);
        const bool isWaiting = layout.isWaiting(app);
        const std::size_t wanted =
            isWaiting ? view::Picker::nothing : static_cast<std::size_t>(layout.section(app));
        require(picker != nullptr && picker->selected == wanted, "the settings show what is set", app);
    }
}

}  // namespace velko::scenarios
