#include "Velko/Commands/Reports.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "Velko/App/AppController.h"
#include "Velko/App/Health.h"
#include "Velko/Apps/ManagedWords.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Flows/EarlierLayouts.h"
#include "VelkoCore/Files/Json.h"
#include "VelkoCore/Layout/LayoutHistory.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Time/Date.h"
#include "VelkoEngine/Text/Text.h"

namespace velko::commands {

namespace {

/// One app of the list.
struct Listed {
    PresentApp app;
    Section section;
    bool isHidden;
    bool isNew;
    bool isManaged;
};

std::vector<Listed> appsListed(const AppController& controller) {
    const Layout& layout = controller.values().layout;
    std::vector<Listed> listed;
    for (PresentApp& app : presentApps(controller.values())) {
        if (canBePlaced(controller, app.bundleID)) {
            const Section section = layout.section(app.bundleID);
            const bool isHidden = controller.engine().current().hides(app.bundleID);
            const bool isNew = layout.isWaiting(app.bundleID);
            const bool isManaged = controller.values().managed.places(app.bundleID);
            listed.push_back({.app = std::move(app),
                              .section = section,
                              .isHidden = isHidden,
                              .isNew = isNew,
                              .isManaged = isManaged});
        }
    }
    return listed;
}

std::string_view wordFor(const RevealState& state) {
    if (state.asPeeking() != nullptr) {
        return "opening";
    }
    if (state.asShareSafe() != nullptr) {
        return "presenting";
    }
    return !state.isRevealed()                          ? "tidy"
           : state == RevealState::revealedWithBuried() ? "revealed-with-buried"
                                                        : "revealed";
}

std::string_view wordFor(Health::Kind health) {
    switch (health) {
        case Health::Kind::ok: break;
        case Health::Kind::needsAccessibility: return "permission-missing";
        case Health::Kind::engineUnavailable: return "engine-unavailable";
        case Health::Kind::layoutUnreadable: return "layout-unreadable";
    }
    return "ok";
}

bool isInForce(const AppController& controller) {
    return controller.engine().current() == controller.currentPlan();
}

std::string countOf(std::size_t count, std::string_view one, std::string_view many) {
    return std::to_string(count) + " " + std::string(count == 1 ? one : many);
}

/// Local time as a report says it: "2026-03-01T09:30:00".
std::string isoText(std::chrono::local_seconds moment) {
    std::string utc = formatDate(Date(moment.time_since_epoch()));
    utc.pop_back();  // the Z
    return utc;
}

Json text(std::string_view words) {
    return {std::string(words)};
}

std::string stateInWords(const AppValues& values) {
    const std::string hidden = countOf(values.tidiedCount, "app is hidden.", "apps are hidden.");
    if (values.hidesNothing()) {
        return "Nothing is hidden on this wide display.";
    }
    if (values.stepsAside()) {
        return "Everything is out because of a Live Activity.";
    }
    if (const auto* const peek = values.state.asPeeking()) {
        return "The menu of " + peek->bundleID + " is open. " + hidden;
    }
    const std::string_view word = wordFor(values.state);
    return (word == "tidy"         ? "Tidy. "
            : word == "revealed"   ? "The tucked icons are out. "
            : word == "presenting" ? "Presenting. "
                                   : "The tucked and the buried icons are out. ") +
           hidden;
}

}  // namespace

bool isTidy(const AppController& controller) {
    const AppValues& values = controller.values();
    return values.health().isOk() && values.inventoryLoaded && values.state == RevealState::collapsed() &&
           !values.isEverythingOut() && !values.showingMe && isInForce(controller);
}

bool isRevealed(const AppController& controller) {
    const AppValues& values = controller.values();
    return values.health().isOk() && (values.state.isRevealed() || values.isEverythingOut()) &&
           isInForce(controller);
}

std::string statusText(const FaceParts& parts) {
    const AppValues& values = parts.controller.values();
    std::string lines;
    const auto add = [&lines](std::string_view line) { lines.append(line).append("\n"); };
    if (values.health().isOk()) {
        add(stateInWords(values));
    } else {
        add(describe(values.health().kind));
    }
    if (values.isRefused) {
        add(refusalInWords);
    }
    if (!values.layout.inbox.empty()) {
        add(countOf(values.layout.inbox.size(), "new app waits", "new apps wait") + " for your answer.");
    }
    if (!values.layout.askAboutNewIcons) {
        add("Velko does not ask about new icons.");
    }
    if (!values.managed.isEmpty()) {
        add(std::string(managedInWords) + ": " + inWords(values.managed) + ".");
    }
    if (!values.managedFaults.empty()) {
        add("Your organisation's layout has faults: " + values.managedFaults.front());
    }
    if (values.saveFailure) {
        add("Not saved: " + *values.saveFailure);
    }
    return lines;
}

std::string statusJson(const FaceParts& parts) {
    const AppController& controller = parts.controller;
    const AppValues& values = controller.values();
    Json::Array waiting;
    for (const BundleID& bundleID : values.layout.inbox) {
        waiting.push_back(text(bundleID));
    }
    Json::Object object{{"version", {std::int64_t{reportVersion}}},
                        {"velko", text(controller.info().version)},
                        {"state", text(wordFor(values.state))},
                        {"settled", {isInForce(controller)}},
                        {"style", text(name(values.activeStyle))},
                        {"health", text(wordFor(values.health().kind))},
                        {"refused", {values.isRefused}},
                        {"hidden", {static_cast<std::uint64_t>(values.tidiedCount)}},
                        {"new", {std::move(waiting)}},
                        {"asks", {values.layout.askAboutNewIcons}},
                        {"liveActivity", {values.stepsAside()}},
                        {"managed", {!values.managed.isEmpty()}},
                        {"wideDisplay", {values.hidesNothing()}},
                        {"saved", {!values.saveFailure}}};
    if (const auto* const peek = values.state.asPeeking()) {
        object.emplace("opening", text(peek->bundleID));
    }
    return Json{std::move(object)}.print();
}

std::string listText(const FaceParts& parts) {
    std::string lines;
    for (const Listed& each : appsListed(parts.controller)) {
        lines.append(name(each.section)).append("\t").append(printable(each.app.name)).append("\t");
        lines.append(printable(each.app.bundleID)).append("\t");
        lines.append(each.isHidden ? "hidden" : "").append(each.isHidden && each.isNew ? "," : "");
        lines.append(each.isNew ? "new" : "");
        lines.append(each.isManaged ? (each.isHidden ? ",managed" : "managed") : "").append("\n");
    }
    return lines;
}

std::string listJson(const FaceParts& parts) {
    Json::Array apps;
    for (const Listed& each : appsListed(parts.controller)) {
        apps.push_back({Json::Object{{"identifier", text(each.app.bundleID)},
                                     {"name", text(each.app.name)},
                                     {"section", text(name(each.section))},
                                     {"hidden", {each.isHidden}},
                                     {"new", {each.isNew}},
                                     {"managed", {each.isManaged}}}});
    }
    return Json{Json::Object{{"version", {std::int64_t{reportVersion}}}, {"apps", {std::move(apps)}}}}
        .print();
}

std::expected<std::string, std::string> historyText(const FaceParts& parts) {
    const EarlierLayouts& earlier = parts.controller.earlierLayouts();
    const auto kept = earlier.list();
    if (!kept) {
        return std::unexpected(kept.error().description);
    }
    std::string lines;
    for (const EarlierLayout& each : *kept) {
        std::string moment = isoText(each.entry.when);
        std::ranges::replace(moment, 'T', '\t');
        lines.append(std::to_string(each.entry.number)).append("\t").append(moment).append("\t");
        lines.append(name(each.entry.cause)).append("\t");
        lines.append(printable(earlier.inWords(each))).append("\n");
    }
    return lines;
}

std::expected<std::string, std::string> historyJson(const FaceParts& parts) {
    const EarlierLayouts& earlier = parts.controller.earlierLayouts();
    const auto kept = earlier.list();
    if (!kept) {
        return std::unexpected(kept.error().description);
    }
    Json::Array layouts;
    for (const EarlierLayout& each : *kept) {
        layouts.push_back({Json::Object{{"number", {std::uint64_t{each.entry.number}}},
                                        {"file", text(each.entry.file())},
                                        {"when", text(isoText(each.entry.when))},
                                        {"cause", text(name(each.entry.cause))},
                                        {"readable", {each.layout.has_value()}},
                                        {"differences", text(earlier.inWords(each))}}});
    }
    return Json{Json::Object{{"version", {std::int64_t{reportVersion}}}, {"layouts", {std::move(layouts)}}}}
        .print();
}

}  // namespace velko::commands
