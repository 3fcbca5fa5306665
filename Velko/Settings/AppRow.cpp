#include "Velko/Settings/AppRow.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

#include "Velko/App/AppController.h"
#include "Velko/App/FaceParts.h"
#include "Velko/Apps/ManagedWords.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Flows/Questions.h"
#include "Velko/View/Tree.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko::AppRow {

namespace {

using Presence = ListedApp::Presence;

constexpr std::array sectionTitles{"Bar", "Tucked", "Buried"};

Date dateOf(const FaceParts& parts) {
    return floorToSeconds(parts.platform.mainThread.date());
}

std::string days(std::int64_t count) {
    return count == 1 ? "1 day" : std::to_string(count) + " days";
}

/// Where an app is, or what it costs, as the small line says it; nothing if there is nothing to say.
std::optional<view::Node> usageLine(const ListedApp& app) {
    const std::string id = "usage:" + app.bundleID;
    if (app.isWaiting) {
        return view::explanation(id, "New here. Where does it go?");
    }
    switch (app.presence) {
        case Presence::notRunning:
            return view::explanation(id, app.isInstalled ? "not running" : "not on this Mac");
        case Presence::runningWithoutIcon: return view::explanation(id, "running, without an icon right now");
        case Presence::inMenuBar:
        case Presence::unknown: break;
    }
    if (!app.usage) {
        return std::nullopt;
    }
    view::Node line = view::explanation(id, describe(*app.usage));
    line.help = AppHealth::usageHelp(*app.usage);
    return line;
}

/// What the autopilot would do with an app: "Tuck", "Quit".
std::string proposal(const TidySuggestion& suggestion) {
    const auto* const move = std::get_if<TidySuggestion::MoveTo>(&suggestion.change);
    return move == nullptr ? "Quit" : placingTitle(move->section);
}

view::Node link(std::string id, std::string title, std::string label, std::function<void()> press) {
    view::Node node = view::button(
        std::move(id),
        {.title = std::move(title), .style = view::Button::Style::link, .press = std::move(press)});
    node.label = std::move(label);
    return node;
}

/// What the autopilot thinks of an app, with what the user can answer; nothing if it thinks nothing.
std::optional<view::Node> autopilotLine(const FaceParts& parts, const ListedApp& app) {
    AutopilotOffers& autopilot = parts.controller.autopilot();
    const BundleID id = app.bundleID;
    std::vector<view::Node> children;
    if (app.suggestion) {
        children = {view::explanation("thinks:" + id, describe(app.suggestion->reason)),
                    link("accept:" + id, proposal(*app.suggestion),
                         proposal(*app.suggestion) + " " + inSentence(app.name),
                         [&autopilot, suggestion = *app.suggestion] { autopilot.accept(suggestion); }),
                    link("later:" + id, "Not Now", "Not now for " + inSentence(app.name),
                         [&autopilot, id] { autopilot.dismiss(id); })};
    } else if (app.putOffUntil && *app.putOffUntil > dateOf(parts) && !app.isKept) {
        const std::int64_t left = Calendar().daysBetween(dateOf(parts), *app.putOffUntil);
        children = {view::explanation("thinks:" + id, "No suggestions for " + days(left)),
                    link("ask-again:" + id, "Suggest Again", "Suggest again for " + inSentence(app.name),
                         [&autopilot, id] { autopilot.askAgain(id); })};
    } else {
        return std::nullopt;
    }
    return view::row("autopilot:" + id, std::move(children));
}

/// Symbols for what is special about an app.
std::vector<view::Node> marks(const AppController& controller, const ListedApp& app) {
    std::vector<view::Node> result;
    const auto add = [&](const char* kind, std::string label, std::string help, const char* symbol,
                         view::Ink ink) {
        result.push_back({.id = std::string(kind) + ":" + app.bundleID,
                          .label = std::move(label),
                          .help = std::move(help),
                          .content = view::Symbol{.name = symbol, .ink = ink}});
    };
    if (controller.values().showingMe == app.bundleID) {
        add("shown", inSentence(app.name) + " is being shown", "Only this icon shows for a moment", "eye",
            view::Ink::accent);
    }
    if (app.usage && AppHealth::isHeavy(*app.usage)) {
        add("heavy", inSentence(app.name) + " uses a lot", std::string(AppHealth::usageHelp(*app.usage)),
            "exclamationmark.triangle", view::Ink::warning);
    }
    if (app.isKept && !app.isManaged) {
        add("kept", inSentence(app.name) + " is always kept here", "Autopilot won't suggest moving this app",
            "pin", view::Ink::label);
    }
    return result;
}

view::Node sectionPicker(AppController& controller, const ListedApp& app) {
    return {.id = "section:" + app.bundleID,
            .label = "Where " + inSentence(app.name) + " goes",
            .help = app.isManaged ? managedInWords : "",
            .isEnabled = !app.isManaged,
            .content = view::Picker{
                .options = {sectionTitles.begin(), sectionTitles.end()},
                // An app that waits for an answer may also stay where it is: that is an answer too.
                .selected = app.isWaiting ? view::Picker::nothing : static_cast<std::size_t>(app.section),
                .style = view::Picker::Style::segmented,
                .choose = [&controller, bundleID = app.bundleID](std::size_t index) {
                    controller.place(bundleID, allSections.at(index));
                }}};
}

/// What VoiceOver says of a row, and what the user types to find it.
std::string rowInWords(const ListedApp& app, const std::vector<std::string>& facts) {
    std::string words = app.name + ", " + (app.isWaiting ? "new" : titleOf(app.section));
    for (const std::string& fact : facts) {
        words.append(", ").append(fact);
    }
    return words;
}

}  // namespace

std::string titleOf(Section section) {
    return sectionTitles.at(static_cast<std::size_t>(section));
}

std::string lastClickInWords(const ListedApp& app, Date now) {
    if (!app.lastClicked) {
        return {};
    }
    const std::int64_t past = Calendar().daysBetween(*app.lastClicked, now);
    return past == 0 ? "Clicked today" : past == 1 ? "Clicked yesterday" : "Clicked " + days(past) + " ago";
}

view::Node make(const FaceParts& parts, const ListedApp& app) {
    AppController& controller = parts.controller;
    view::Node appName{
        .id = "name:" + app.bundleID,
        .content = view::Text{.text = app.name, .isSecondary = app.presence == Presence::notRunning}};
    std::vector<view::Node> facts;
    std::vector<std::string> spoken;
    if (std::string clicked = lastClickInWords(app, dateOf(parts)); !clicked.empty()) {
        spoken.push_back(clicked);
        facts.push_back(view::explanation("clicked:" + app.bundleID, std::move(clicked)));
    }
    if (auto line = usageLine(app)) {
        spoken.push_back(view::spoken(*line));
        facts.push_back(*std::move(line));
    }
    if (app.isManaged) {
        spoken.emplace_back(managedInWords);
        facts.push_back(view::explanation("managed:" + app.bundleID, managedInWords));
    }
    std::vector<view::Node> words{std::move(appName)};
    if (!facts.empty()) {
        words.push_back(view::row("facts:" + app.bundleID, std::move(facts)));
    }
    if (app.isQuiet) {
        words.push_back(view::explanation("quiet:" + app.bundleID,
                                          "It changed so often that it stays in until tomorrow."));
    }
    if (auto line = autopilotLine(parts, app)) {
        words.push_back(*std::move(line));
    }
    std::vector<view::Node> children{
        {.id = "icon:" + app.bundleID, .content = view::AppIcon{.bundleID = app.bundleID, .points = 24}},
        view::column("words:" + app.bundleID, std::move(words), 2),
        view::spacer("gap:" + app.bundleID)};
    std::ranges::move(marks(controller, app), std::back_inserter(children));
    children.push_back(sectionPicker(controller, app));
    children.push_back({.id = "more:" + app.bundleID,
                        .label = "More for " + inSentence(app.name),
                        .content = view::MenuButton{.symbol = "ellipsis.circle",
                                                    .menu = [&parts, app] { return moreMenu(parts, app); }}});
    view::Node row = view::row("app:" + app.bundleID, std::move(children));
    row.label = rowInWords(app, spoken);
    return row;
}

}  // namespace velko::AppRow
