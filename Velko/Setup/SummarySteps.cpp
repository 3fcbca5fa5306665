#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Setup/SetupFlow.h"
#include "Velko/Setup/SetupFrame.h"
#include "Velko/Setup/SetupSteps.h"
#include "Velko/View/Menu.h"
#include "Velko/View/Node.h"

namespace velko::SetupSteps {

using namespace SetupFrame;

namespace {

constexpr std::size_t tilesInRow = 2;
constexpr double tileWidth = 74;
constexpr double groupsHeight = 264;  // more apps scroll

std::string counted(const SortSession& session) {
    return describe(SectionCounts{.bar = session.count(Section::bar),
                                  .tucked = session.count(Section::tucked),
                                  .buried = session.count(Section::buried)}) +
           ".";
}

/// The places to which the user can move the app.
view::Menu placesFor(const BundleID& bundleID, Section now, const SetupActions& actions) {
    view::Menu menu;
    for (const Section section : allSections) {
        menu.push_back({.title = placingTitle(section),
                        .isChecked = section == now,
                        .action = [move = actions.move, bundleID, section] { move(bundleID, section); }});
    }
    return menu;
}

view::Node tile(const SortCard& card, Section now, const SetupActions& actions) {
    return {.id = "summary:app:" + card.bundleID,
            .help = inSentence(card.name) + ": click to choose another place",
            .width = tileWidth,
            .content = view::Tile{
                .bundleID = card.bundleID,
                .name = card.name,
                .press = [review = actions.review, id = card.bundleID] { review(id); },
                .menu = [id = card.bundleID, now, actions] { return placesFor(id, now, actions); }}};
}

std::vector<view::Node> rows(const std::string& id, const std::vector<const SortCard*>& cards,
                             Section section, const SetupActions& actions) {
    std::vector<view::Node> result;
    for (std::size_t first = 0; first < cards.size(); first += tilesInRow) {
        std::vector<view::Node> tiles;
        for (std::size_t index = first; index < std::min(first + tilesInRow, cards.size()); ++index) {
            tiles.push_back(tile(*cards[index], section, actions));
        }
        view::Node row =
            view::row(id + ":" + std::to_string(first), std::move(tiles), view::Stack::Alignment::leading);
        std::get<view::Stack>(row.content).spacing = 0;
        result.push_back(std::move(row));
    }
    if (cards.empty()) {
        result.push_back(view::explanation(id + ":none", "No app"));
    }
    return result;
}

/// The apps of a section. It takes those that the user drags from another one.
view::Node group(const SortSession& session, Section section, std::string title,
                 const SetupActions& actions) {
    const auto sections = session.result();
    std::vector<const SortCard*> cards;
    for (const SortCard& card : session.cards()) {
        if (sections.at(card.bundleID) == section) {
            cards.push_back(&card);
        }
    }
    const std::string id = "summary:" + std::string(name(section));
    return {.id = id,
            .width = columnWidth,
            .content = view::Group{.title = std::move(title),
                                   .children = rows(id, cards, section, actions),
                                   .drop = [move = actions.move, section](const BundleID& bundleID) {
                                       move(bundleID, section);
                                   }}};
}

view::Node groups(const SortSession& session, const SetupActions& actions) {
    view::Node columns = view::row("summary:groups",
                                   {group(session, Section::bar, "In the Bar", actions),
                                    group(session, Section::tucked, "Tucked", actions),
                                    group(session, Section::buried, "Buried", actions)},
                                   view::Stack::Alignment::leading);
    return {.id = "summary:scroll",
            .label = "Where the apps go",
            .content = view::Scroll{.height = groupsHeight, .children = {std::move(columns)}}};
}

view::Node stylePicker(RevealStyle chosen, const SetupActions& actions) {
    constexpr std::array styles{RevealStyle::inline_, RevealStyle::shelf};
    return {.id = "summary:style",
            .help = "The shelf is a panel below the menu bar. Beside a notch there is little room for icons.",
            .content = view::Picker{
                .title = "Beside the notch, icons come out",
                .options = {"In the menu bar", "On the shelf"},
                .selected = static_cast<std::size_t>(std::ranges::find(styles, chosen) - styles.begin()),
                .style = view::Picker::Style::segmented,
                .choose = [choose = actions.chooseNotchedStyle, styles](std::size_t index) {
                    choose(styles.at(index));
                }}};
}

}  // namespace

std::string spokenSummary(const SortSession& session) {
    return "All sorted. " + counted(session);
}

view::Node summary(const SortSession& session, const SetupFlow& flow, const SummaryFacts& facts,
                   const SetupActions& actions) {
    Foot foot{.left = backButton(flow.canGoBack(), actions.back),
              .right = {primaryButton("summary:apply", "Apply to Menu Bar", actions.apply)}};
    std::vector<view::Node> content;
    if (session.cards().empty()) {
        content = {headSymbol("summary:symbol", "menubar.rectangle"),
                   centred("summary:title", "Nothing to sort", view::Text::Style::title),
                   centred("summary:counts", facts.whyEmpty)};
    } else {
        content = {centred("summary:title", "All sorted", view::Text::Style::title),
                   centred("summary:counts", counted(session)), groups(session, actions)};
        foot.left.push_back(
            view::button("summary:over", {.title = "Start Over…", .press = actions.startOver}));
    }
    if (facts.notchedStyle) {
        content.push_back(stylePicker(*facts.notchedStyle, actions));
    }
    if (facts.organiser) {
        content.push_back(organiserNotice("summary:organiser", *facts.organiser, actions));
    }
    std::string later = "You can change any of it later, in the settings.";
    if (const auto& imported = flow.imported(); imported && flow.takesTiming()) {
        later = "With " + imported->source + "'s timing. " + later;
    }
    content.push_back(centred("summary:later", std::move(later), view::Text::Style::caption));
    return step("setup:summary", std::move(content), std::move(foot));
}

}  // namespace velko::SetupSteps
