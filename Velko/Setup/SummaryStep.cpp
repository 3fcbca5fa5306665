#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "Velko/Setup/SectionCounts.h"
#include "Velko/Setup/SetupFrame.h"
#include "Velko/Setup/SetupSteps.h"
#include "Velko/View/Build.h"

namespace velko::SetupSteps {

using namespace SetupFrame;

namespace {

constexpr std::size_t iconsInRow = 5;
constexpr std::size_t mostRows = 5;

std::string counted(const SortSession& session) {
    return describe(SectionCounts{.bar = session.count(Section::bar),
                                  .tucked = session.count(Section::tucked),
                                  .buried = session.count(Section::buried)}) +
           ".";
}

view::Node icon(const SortCard& card) {
    return {.id = "summary:icon:" + card.bundleID,
            .help = card.name,
            .content = view::AppIcon{.bundleID = card.bundleID, .points = 20}};
}

/// Icons in rows; of very many only the first.
std::vector<view::Node> rows(const std::string& id, const std::vector<const SortCard*>& cards) {
    const bool isRoomForAll = cards.size() <= mostRows * iconsInRow;
    const std::size_t shown = isRoomForAll ? cards.size() : (mostRows - 1) * iconsInRow;
    std::vector<view::Node> result;
    for (std::size_t first = 0; first < shown; first += iconsInRow) {
        std::vector<view::Node> icons;
        for (std::size_t index = first; index < std::min(first + iconsInRow, shown); ++index) {
            icons.push_back(icon(*cards[index]));
        }
        view::Node row = view::row(id + ":" + std::to_string(first), std::move(icons));
        std::get<view::Stack>(row.content).spacing = 6;
        result.push_back(std::move(row));
    }
    if (!isRoomForAll) {
        result.push_back(
            view::explanation(id + ":more", "and " + std::to_string(cards.size() - shown) + " more"));
    } else if (cards.empty()) {
        result.push_back(view::explanation(id + ":none", "No app"));
    }
    return result;
}

/// The apps of a section, as their icons.
view::Node group(const SortSession& session, Section section, std::string title) {
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
            .content = view::Group{.title = std::move(title), .children = rows(id, cards)}};
}

view::Node groups(const SortSession& session) {
    view::Node row = view::row("summary:groups", {group(session, Section::bar, "In the Bar"),
                                                  group(session, Section::tucked, "Tucked"),
                                                  group(session, Section::buried, "Buried")});
    std::get<view::Stack>(row.content).alignment = view::Stack::Alignment::leading;
    return row;
}

}  // namespace

view::Node summary(const SortSession& session, const SetupFlow& flow, const std::string& whyEmpty,
                   const SetupActions& actions) {
    Foot foot{.left = backButton(flow.canGoBack(), actions.back),
              .right = {primaryButton("summary:apply", "Apply to Menu Bar", actions.apply)}};
    std::vector<view::Node> content;
    if (session.cards().empty()) {
        content = {headSymbol("summary:symbol", "menubar.rectangle"),
                   centred("summary:title", "Nothing to sort", view::Text::Style::title),
                   centred("summary:counts", whyEmpty)};
    } else {
        content = {centred("summary:title", "All sorted", view::Text::Style::title),
                   centred("summary:counts", counted(session)), groups(session)};
        foot.left.push_back(
            view::button("summary:over", {.title = "Start Over", .press = actions.startOver}));
    }
    if (const auto& imported = flow.imported(); imported && flow.takesTiming()) {
        content.push_back(
            centred("summary:timing", "With " + imported->source + "'s timing.", view::Text::Style::caption));
    }
    content.push_back(centred("summary:later", "You can change any of it later, in the settings.",
                              view::Text::Style::caption));
    return step("setup:summary", std::move(content), std::move(foot));
}

}  // namespace velko::SetupSteps
