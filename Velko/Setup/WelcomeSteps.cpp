#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "Velko/App/Health.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Setup/SetupFlow.h"
#include "Velko/Setup/SetupFrame.h"
#include "Velko/Setup/SetupSteps.h"
#include "Velko/View/Node.h"

namespace velko::SetupSteps {

using namespace SetupFrame;

view::Node welcome(view::Drawing picture, bool isInPlace, const SetupActions& actions) {
    std::vector<view::Node> content{
        {.id = "welcome:intro", .content = view::Picture{.drawing = std::move(picture)}},
        centred("welcome:title", "Hello, I'm Velko.", view::Text::Style::largeTitle),
        centred("welcome:what",
                "I sweep the icons that you rarely need behind my broom, so your menu bar stays "
                "calm. One click on the broom brings them back."),
        centred(
            "welcome:promise",
            "You decide about every app. Your icons stay where they are until you have sorted them; later, "
            "a new icon waits behind the broom until you say where it goes.",
            view::Text::Style::caption)};
    if (!isInPlace) {
        content.push_back(notice(
            "welcome:place", "Outside the Applications folder my icon may hide too.",
            {view::button("welcome:move", {.title = moveTitle, .press = actions.moveToApplications})}));
    }
    return step("setup:welcome", std::move(content),
                {.left = {view::button("welcome:later", {.title = "Not Now", .press = actions.notNow})},
                 .right = {primaryButton("welcome:go", "Let's Tidy", actions.goOn)}});
}

view::Node permission(bool isTrusted, const SetupActions& actions) {
    const view::Node state =
        isTrusted ? centred("permission:state", "Done. Thank you!", view::Text::Style::headline)
                  : centred("permission:state", "Velko goes on as soon as you have switched it on.",
                            view::Text::Style::caption);
    const view::Node next = isTrusted ? primaryButton("permission:go", "Continue", actions.goOn)
                                      : permissionButton(actions.openPermission);
    return step(
        "setup:permission",
        {headSymbol("permission:symbol", isTrusted ? "checkmark.circle.fill" : "lock.shield"),
         centred("permission:title", "One permission, please", view::Text::Style::title),
         centred("permission:why",
                 "To see whose icons are in your menu bar, and which of them you click, Velko needs the "
                 "Accessibility permission."),
         centred("permission:where",
                 "macOS lists it as “Device Control and Data Access”. Switch Velko on in the list there."),
         centred("permission:promise",
                 "Velko never sees what you type, and what it learns stays on this Mac.",
                 view::Text::Style::caption),
         state},
        {.left = backButton(true, actions.back), .right = {next}});
}

namespace {

/// A list with a title and a mark before each line.
class MarkedList {
 public:
    MarkedList(std::string id, std::string title, view::Symbol mark)
        : id_(std::move(id)), title_(std::move(title)), mark_(std::move(mark)) {}

    void add(const std::string& what, std::string words) {
        view::Node mark{.id = what + ":mark", .content = mark_};
        lines_.push_back(view::row(what + ":line", {std::move(mark), view::text(what, std::move(words))}));
    }

    [[nodiscard]] view::Node node() && {
        return {.id = std::move(id_),
                .width = contentWidth,
                .content = view::Group{.title = std::move(title_), .children = std::move(lines_)}};
    }

 private:
    std::string id_;
    std::string title_;
    view::Symbol mark_;
    std::vector<view::Node> lines_;
};

/// How many cards propose each section because of what was found. Apps that the user has placed already do
/// not count.
SectionCounts proposed(const SortSession& session, const ImportedLayout& imported) {
    SectionCounts counts;
    for (const SortCard& card : session.cards()) {
        const auto* const from = std::get_if<Suggestion::Imported>(&card.suggestion.reason);
        if (from != nullptr && from->source == imported.source) {
            counts.add(card.suggestion.section);
        }
    }
    return counts;
}

view::Node comesAlong(const ImportedLayout& imported, const SectionCounts& counts) {
    MarkedList list("found:along", "Comes along", {.name = "checkmark", .ink = view::Ink::accent});
    if (counts.all() > 0) {
        list.add("found:places", "The places of " + appsInWords(counts.all()) + ": " + describe(counts));
    }
    if (const auto seconds = imported.autoTuckSeconds) {
        list.add("found:time", *seconds == 0 ? "Icons stay out until you tuck them"
                                             : "Icons stay out for " + std::to_string(*seconds) + " seconds");
    }
    if (imported.hover) {
        list.add("found:hover", *imported.hover ? "Icons come out when the pointer rests on the broom"
                                                : "Icons come out only when you click the broom");
    }
    if (counts.all() == 0 && !imported.autoTuckSeconds && !imported.hover) {
        list.add("found:nothing", "Nothing that would fit your menu bar");
    }
    return std::move(list).node();
}

view::Node staysBehind(const ImportedLayout& imported, std::size_t others) {
    MarkedList list("found:behind", "Stays behind", {.name = "minus"});
    const std::string silence = ": " + imported.source + " doesn't say";
    if (imported.sections.empty()) {
        list.add("found:unplaced", "The places of your icons: you sort them card by card");
    } else if (others > 0) {
        list.add("found:others", appsInWords(others) + " without an icon now: you sort " +
                                     (others == 1 ? "it when it moves in" : "them when they move in"));
    }
    if (!imported.autoTuckSeconds) {
        list.add("found:time", "How long icons stay out" + silence);
    }
    if (!imported.hover) {
        list.add("found:hover", "Whether resting the pointer shows them" + silence);
    }
    list.add("found:rest", "Single icons, hot keys and colours: Velko hides whole apps");
    return std::move(list).node();
}

std::vector<view::Node> decisions(const ImportedLayout& imported, const SetupActions& actions) {
    const auto decide = [&actions](bool take) {
        return [decide = actions.decideTiming, take] { decide(take); };
    };
    if (!imported.autoTuckSeconds && !imported.hover) {
        return {primaryButton("found:go", "Continue", decide(false))};
    }
    return {keyButton("found:keep", "Keep Velko's Timing", 'k', decide(false)),
            primaryButton("found:take", "Use " + imported.source + "'s Timing", decide(true))};
}

}  // namespace

view::Node organiserNotice(const std::string& id, const std::string& organiser, const SetupActions& actions) {
    return notice(
        id, organiser + " is running. Two organisers get in each other's way.",
        {view::button(id + ":quit", {.title = "Quit " + organiser, .press = actions.quitOrganiser})});
}

view::Node found(const ImportedLayout& imported, const SortSession& session, const FoundFacts& facts,
                 const SetupActions& actions) {
    const SectionCounts counts = proposed(session, imported);
    std::vector<view::Node> content{
        centred("found:title", "You come from " + imported.source, view::Text::Style::title),
        comesAlong(imported, counts), staysBehind(imported, facts.others)};
    if (facts.isRunning) {
        content.push_back(organiserNotice("found:organiser", imported.source, actions));
    }
    if (counts.all() > 0) {
        content.push_back(centred("found:suggested", "Places are only suggested on your cards.",
                                  view::Text::Style::caption));
    }
    return step("setup:found", std::move(content),
                {.left = backButton(true, actions.back), .right = decisions(imported, actions)});
}

}  // namespace velko::SetupSteps
