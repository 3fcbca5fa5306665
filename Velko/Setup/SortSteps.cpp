#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Setup/SetupFlow.h"
#include "Velko/Setup/SetupFrame.h"
#include "Velko/Setup/SetupSteps.h"
#include "Velko/View/Node.h"

namespace velko::SetupSteps {

using namespace SetupFrame;

namespace {

constexpr double buttonWidth = 152;

struct Choice {
    Section section;
    const char* meaning;
    char key;
};

constexpr std::array choices{
    Choice{.section = Section::bar, .meaning = "Always out.", .key = '1'},
    Choice{.section = Section::tucked, .meaning = "Behind the broom. One click brings it back.", .key = '2'},
    Choice{.section = Section::buried, .meaning = "Out of sight, until you ask for it.", .key = '3'}};

/// The key of a choice. It is filled in for the proposed one.
view::Node mark(const Choice& choice, bool isProposed) {
    view::Symbol symbol{.name = std::string(1, choice.key) + ".circle", .points = 20};
    if (isProposed) {
        symbol.name += ".fill";
        symbol.ink = view::Ink::accent;
    }
    return {.id = "sort:mark:" + std::string(name(choice.section)), .content = std::move(symbol)};
}

/// The proposed choice is what Return takes.
view::Node choiceButton(const Choice& choice, const SortCard& card, bool isProposed,
                        const SetupActions& actions) {
    view::Node node =
        keyButton("sort:" + std::string(name(choice.section)), placingTitle(choice.section), choice.key,
                  [choose = actions.choose, section = choice.section] { choose(section); });
    if (isProposed) {
        auto& button = std::get<view::Button>(node.content);
        button.style = view::Button::Style::primary;
        button.alternative = std::exchange(button.shortcut, {.key = view::Shortcut::Key::enter});
    }
    node.label =
        inSentence(card.name) + ": " + placingTitle(choice.section) + (isProposed ? ", proposed" : "");
    node.help = "Press " + std::string(1, choice.key) + (isProposed ? " or Return" : "");
    node.width = buttonWidth;
    return node;
}

view::Node choiceColumns(const SortCard& card, Section proposed, const SetupActions& actions) {
    std::vector<view::Node> columns;
    for (const Choice& choice : choices) {
        const std::string word(name(choice.section));
        const bool isProposed = choice.section == proposed;
        columns.push_back(
            {.id = "sort:column:" + word,
             .width = columnWidth,
             .content = view::Stack{
                 .alignment = view::Stack::Alignment::centre,
                 .children = {mark(choice, isProposed), choiceButton(choice, card, isProposed, actions),
                              centred("sort:meaning:" + word, choice.meaning, view::Text::Style::caption)}}});
    }
    return view::row("sort:choices", std::move(columns), view::Stack::Alignment::leading);
}

std::string placeOf(const SortSession& session, const SetupFlow& flow) {
    return flow.isReviewing()
               ? "Another place"
               : std::to_string(session.index() + 1) + " of " + std::to_string(session.cards().size());
}

/// How far the user has come.
view::Node progress(const SortSession& session, const SetupFlow& flow) {
    constexpr double width = 240;
    const auto all = static_cast<double>(session.cards().size());
    return {.id = "sort:progress",
            .label = "Sorted: " + std::to_string(session.index()) + " of " +
                     std::to_string(session.cards().size()),
            .width = width,
            .content = view::Progress{
                .value = flow.isReviewing() || all == 0 ? 1 : static_cast<double>(session.index()) / all}};
}

std::string reason(const SortCard& card, const SetupFlow& flow) {
    return flow.proposed() == card.suggestion.section ? describe(card.suggestion.reason)
                                                      : "Your choice before";
}

}  // namespace

std::string spokenCard(const SortSession& session, const SetupFlow& flow) {
    const SortCard& card = *session.current();
    const auto* const choice = std::ranges::find(choices, flow.proposed(), &Choice::section);
    return placeOf(session, flow) + ": " + inSentence(card.name) +
           ". Proposed: " + placingTitle(choice->section) + ". " + reason(card, flow);
}

view::Node card(const SortSession& session, const SetupFlow& flow, const SetupActions& actions) {
    const SortCard& card = *session.current();
    Foot foot{.left = backButton(flow.canGoBack(), actions.back)};
    if (!flow.isReviewing()) {
        foot.right.push_back(keyButton("sort:rest", "Accept the Rest", 'r', actions.acceptRest));
        foot.right.back().help = "Press R";
    }
    return step("setup:sort",
                {progress(session, flow),
                 centred("sort:place", placeOf(session, flow), view::Text::Style::caption),
                 {.id = "sort:icon", .content = view::AppIcon{.bundleID = card.bundleID, .points = 72}},
                 centred("sort:name", card.name, view::Text::Style::title),
                 centred("sort:reason", reason(card, flow), view::Text::Style::caption),
                 choiceColumns(card, flow.proposed(), actions)},
                std::move(foot));
}

view::Node nothingToSort(const NoCards& reason, const SetupFlow& flow, const SetupActions& actions) {
    std::vector<view::Node> content{
        headSymbol("waiting:symbol", reason.needsPermission ? "lock.shield" : "menubar.rectangle"),
        centred("waiting:title", "Your icons", view::Text::Style::title), centred("waiting:why", reason.why)};
    Foot foot{.left = backButton(flow.canGoBack(), actions.back)};
    if (!reason.needsPermission && !reason.isWaiting) {
        foot.right.push_back(primaryButton("waiting:close", "Close", actions.close));
        return step("setup:waiting", std::move(content), std::move(foot));
    }
    foot.right.push_back(view::button("waiting:close", {.title = "Close", .press = actions.close}));
    if (reason.needsPermission) {
        content.push_back(centred("waiting:where",
                                  "macOS lists the permission as “Device Control and Data Access”. Velko "
                                  "goes on as soon as you have switched it on.",
                                  view::Text::Style::caption));
        foot.right.push_back(permissionButton(actions.openPermission));
    }
    return step("setup:waiting", std::move(content), std::move(foot));
}

}  // namespace velko::SetupSteps
