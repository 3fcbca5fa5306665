#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "Velko/App/AppController.h"
#include "Velko/App/Health.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Setup/Intro.h"
#include "Velko/Setup/SetupFlow.h"
#include "Velko/Setup/SetupFrame.h"
#include "Velko/Setup/SetupSteps.h"
#include "Velko/View/Node.h"

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

/// The icons in rows; when there are very many, only the first of them.
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

/// The apps of a section, shown as icons.
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
    return view::row("summary:groups",
                     {group(session, Section::bar, "In the Bar"), group(session, Section::tucked, "Tucked"),
                      group(session, Section::buried, "Buried")},
                     view::Stack::Alignment::leading);
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

namespace {

std::string icons(std::size_t count) {
    return count == 1 ? "1 icon is " : std::to_string(count) + " icons are ";
}

std::string those(std::size_t count) {
    return count == 1 ? "it" : "them";
}

std::string whereTheyAre(const TidyOutcome& outcome) {
    if (outcome.isRefused) {
        return refusalInWords;
    }
    if (outcome.tucked > 0) {
        return icons(outcome.tucked) + "behind the broom. Click it to see " + those(outcome.tucked) + ".";
    }
    if (outcome.buried > 0) {
        return icons(outcome.buried) + "buried. Option-click the broom to see " + those(outcome.buried) + ".";
    }
    return outcome.isAllKept ? "Every icon stays in the bar." : "Right now every icon shows.";
}

std::string whatElse(const TidyOutcome& outcome) {
    if (outcome.tucked == 0 || outcome.buried == 0) {
        return "You can change any of it later, in the settings.";
    }
    return outcome.buried == 1
               ? "Option-click it to see the buried one too."
               : "Option-click it to see the " + std::to_string(outcome.buried) + " buried ones too.";
}

}  // namespace

view::Node done(const TidyOutcome& outcome, const SetupActions& actions) {
    const bool isTidy = !outcome.isRefused && (outcome.isAllKept || outcome.tucked + outcome.buried > 0);
    Foot foot{.right = {primaryButton("done:close", "Done", actions.close)}};
    if (outcome.isRefused) {
        foot.left.push_back(view::button("done:again", {.title = "Try Again", .press = actions.tryAgain}));
    }
    return step("setup:done",
                {{.id = "done:broom", .content = view::Picture{.drawing = Intro::still()}},
                 centred("done:title", isTidy ? "Your menu bar is tidy" : "Your icons are sorted",
                         view::Text::Style::largeTitle),
                 centred("done:where", whereTheyAre(outcome)),
                 centred("done:else", whatElse(outcome), view::Text::Style::caption)},
                std::move(foot));
}

}  // namespace velko::SetupSteps

namespace velko {

TidyOutcome TidyOutcome::of(const AppController& controller) {
    const AppValues& values = controller.values();
    TidyOutcome outcome{.isAllKept = hiddenApps(controller).areNone(),
                        .isRefused = values.isRefused && values.health().isOk()};
    for (const MenuBarItem& item : values.items) {
        if (controller.engine().current().hides(item.bundleID)) {
            const bool isBuried = values.layout.section(item.bundleID) == Section::buried;
            ++(isBuried ? outcome.buried : outcome.tucked);
        }
    }
    return outcome;
}

}  // namespace velko
