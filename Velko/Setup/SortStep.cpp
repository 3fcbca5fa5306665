#include <array>
#include <string>
#include <utility>
#include <vector>

#include "Velko/Setup/SetupFrame.h"
#include "Velko/Setup/SetupSteps.h"
#include "Velko/View/Build.h"

namespace velko::SetupSteps {

using namespace SetupFrame;

namespace {

struct Choice {
    Section section;
    const char* title;
    const char* meaning;
    char key;
};

constexpr std::array choices{
    Choice{.section = Section::bar, .title = "Keep in the bar", .meaning = "Always out.", .key = '1'},
    Choice{.section = Section::tucked,
           .title = "Tuck",
           .meaning = "Behind the broom. One click brings it back.",
           .key = '2'},
    Choice{.section = Section::buried,
           .title = "Bury",
           .meaning = "Out of sight, until you ask for it.",
           .key = '3'}};

view::Node choiceButton(const Choice& choice, const SortCard& card, const SetupFlow& flow,
                        const SetupActions& actions) {
    const std::string word(name(choice.section));
    const bool isProposed = flow.proposed() == choice.section;
    view::Node node = view::button(
        "sort:" + word, {.title = std::string(1, choice.key) + "  " + choice.title,
                         .symbol = isProposed ? "checkmark.circle.fill" : "",
                         .shortcut = {.key = view::Shortcut::Key::character, .character = choice.key},
                         .press = [choose = actions.choose, section = choice.section] { choose(section); }});
    node.label = card.name + ": " + choice.title + (isProposed ? ", proposed" : "");
    node.help = choice.meaning;
    return node;
}

view::Node choiceColumns(const SortCard& card, const SetupFlow& flow, const SetupActions& actions) {
    std::vector<view::Node> columns;
    for (const Choice& choice : choices) {
        const std::string word(name(choice.section));
        columns.push_back({.id = "sort:column:" + word,
                           .width = 148,
                           .content = view::Stack{.alignment = view::Stack::Alignment::centre,
                                                  .children = {choiceButton(choice, card, flow, actions),
                                                               centred("sort:meaning:" + word, choice.meaning,
                                                                       view::Text::Style::caption)}}});
    }
    view::Node row = view::row("sort:choices", std::move(columns));
    std::get<view::Stack>(row.content).alignment = view::Stack::Alignment::leading;
    return row;
}

std::string reason(const SortCard& card, const SetupFlow& flow) {
    return flow.proposed() == card.suggestion.section ? describe(card.suggestion.reason)
                                                      : "Your choice before";
}

}  // namespace

view::Node card(const SortSession& session, const SetupFlow& flow, const SetupActions& actions) {
    const SortCard& card = *session.current();
    const std::string place =
        std::to_string(session.index() + 1) + " of " + std::to_string(session.cards().size());
    return step("setup:sort",
                {centred("sort:place", place, view::Text::Style::caption),
                 {.id = "sort:icon", .content = view::AppIcon{.bundleID = card.bundleID, .points = 64}},
                 centred("sort:name", card.name, view::Text::Style::title),
                 centred("sort:reason", reason(card, flow), view::Text::Style::caption),
                 choiceColumns(card, flow, actions),
                 buttons("sort:buttons",
                         {backButton(flow.canGoBack(), actions.back),
                          view::button("sort:rest",
                                       {.title = "Accept the Rest",
                                        .shortcut = {.key = view::Shortcut::Key::character, .character = 'r'},
                                        .press = actions.acceptRest}),
                          view::spacer("sort:gap"), primaryButton("sort:take", "Continue", actions.goOn)})});
}

view::Node nothingToSort(const std::string& why, const SetupFlow& flow, const SetupActions& actions) {
    return step("setup:waiting", {centred("waiting:title", "Your icons", view::Text::Style::title),
                                  centred("waiting:why", why),
                                  buttons("waiting:buttons", {backButton(flow.canGoBack(), actions.back)})});
}

}  // namespace velko::SetupSteps
