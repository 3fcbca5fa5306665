#include "Playground/Web/Picture.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <string_view>

#include "Playground/Web/AppMenus.h"
#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Desktop/SimulatedPointer.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedScreen.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/App/AppController.h"

namespace velko::web {

namespace {

constexpr std::string_view rendererName = "WidgetRenderer_Activities";

Json text(std::string_view value) {
    return {.value = std::string(value)};
}

Json number(std::chrono::milliseconds duration) {
    return {.value = std::int64_t{duration.count()}};
}

std::string_view engineFact(const SimulatedFramework& framework) {
    if (!framework.installed) {
        return "missing";
    }
    if (framework.exception) {
        return "raises";
    }
    if (framework.refusal) {
        return "refuses";
    }
    return framework.answerDelay > SimulatedFramework::usualDelay ? "slow" : "works";
}

/// Whether Velko wants to know where the pointer is, now or soon.
bool wantsPointer(Session& session) {
    const AppController* const velko = session.world().velko();
    return session.mac().pointer.moveObservers() > 0 ||
           (velko != nullptr && velko->values().state.isRevealed());
}

bool hasActivity(const SimulatedMac& mac) {
    return std::ranges::any_of(mac.processes.running(), [](const auto& process) {
        return process.app.name == rendererName && process.cores > 0;
    });
}

/// The surfaces that are open, each with its title.
Json openSurfaces(SimulatedMac& mac) {
    Json::Object open;
    for (const Surfaces::Traits& surface : Surfaces::all()) {
        if (const auto* opening = mac.surfaces.surface(surface.kind).opening()) {
            open.emplace(surface.name, text(opening->title));
        }
    }
    return {.value = std::move(open)};
}

/// How often Velko has brought each of its surfaces to the front.
Json raises(SimulatedMac& mac) {
    Json::Object raises;
    for (const Surfaces::Traits& surface : Surfaces::all()) {
        raises.emplace(surface.name,
                       Json{.value = std::int64_t{mac.surfaces.surface(surface.kind).raised()}});
    }
    return {.value = std::move(raises)};
}

/// What a screen reader was told last, and how much it has been told.
Json said(const SimulatedMac& mac) {
    const auto& all = mac.surfaces.announcements();
    return {.value = Json::Object{{"count", {.value = static_cast<std::int64_t>(all.size())}},
                                  {"words", text(all.empty() ? "" : all.back())}}};
}

Json facts(Session& session) {
    SimulatedMac& mac = session.mac();
    const auto displays = mac.displays.displays();
    const bool hasNotch = !displays.empty() && displays.front().safeAreaTop > 0;
    const auto menus = session.menus();
    const auto now = std::chrono::floor<std::chrono::seconds>(mac.mainThread.date()).time_since_epoch();
    const auto jump = std::chrono::duration_cast<std::chrono::milliseconds>(session.jumpLeft());
    Json::Object facts;
    facts.emplace("now", number(now));
    facts.emplace("speed", Json{.value = static_cast<std::int64_t>(session.speed())});
    facts.emplace("jumpLeft", number(jump));
    facts.emplace("trusted", Json{.value = mac.accessibility.isTrusted()});
    facts.emplace("notch", Json{.value = hasNotch});
    facts.emplace("displays", Json{.value = static_cast<std::int64_t>(displays.size())});
    facts.emplace("activity", Json{.value = hasActivity(mac)});
    facts.emplace("engine", text(engineFact(mac.framework)));
    facts.emplace("savingFails", Json{.value = session.world().savingFails});
    facts.emplace("velko", Json{.value = session.world().velko() != nullptr});
    facts.emplace("wantsPointer", Json{.value = wantsPointer(session)});
    facts.emplace("surfaces", openSurfaces(mac));
    facts.emplace("raised", raises(mac));
    facts.emplace("said", said(mac));
    facts.emplace("menuAnchor", text(menus.empty() ? "" : menus.front().anchor));
    return {.value = std::move(facts)};
}

}  // namespace

Picture draw(Session& session) {
    Picture picture;
    auto& regions = picture.regions;
    regions["bar"] = drawBar(session);
    regions["app-menus"] = drawAppMenus(session);
    for (const Surfaces::Traits& surface : Surfaces::all()) {
        regions["surface-" + std::string(surface.name)] = drawSurface(session, surface);
    }
    regions["system"] = drawSystemSettings(session);
    regions["menu"] = drawMenu(session);
    regions["sheet"] = drawSheet(session);
    regions["apps"] = drawApps(session);
    regions["log"] = drawLog(session);
    regions["plan"] = drawPlan(session);
    regions["layout"] = drawLayoutFile(session);
    regions["elsewhere"] = drawElsewhere(session);
    picture.facts = facts(session);
    return picture;
}

}  // namespace velko::web
