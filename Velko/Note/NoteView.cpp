#include "Velko/Note/NoteView.h"

#include <string>
#include <utility>
#include <variant>

#include "Velko/App/AppController.h"
#include "Velko/Flows/Questions.h"
#include "Velko/Flows/ShowApp.h"
#include "VelkoCore/Layout/Section.h"

namespace velko {

namespace {

using view::AppIcon;
using view::Button;
using view::Node;
using view::Shortcut;
using view::Stack;
using view::Text;

// Points
constexpr double noteWidth = 460;
constexpr double longestList = 440;  // more questions scroll
constexpr double appIconWidth = 32;
constexpr double sparklesWidth = 22;

/// A button in an app's row. Many rows have the same buttons, so VoiceOver also says the app's name.
Node answer(const std::string& what, const PresentApp& app, const std::string& title,
            std::function<void()> press) {
    return {.id = what + ":" + app.bundleID,
            .label = title + ": " + app.name,
            .content = Button{.title = title, .press = std::move(press)}};
}

/// A row about an app: its icon, and beside it lines of text above the buttons.
Node appRow(const PresentApp& app, std::vector<Node> lines, std::vector<Node> buttons) {
    lines.push_back(view::row("buttons:" + app.bundleID, std::move(buttons)));
    return {
        .id = "row:" + app.bundleID,
        .content = Stack{.axis = Stack::Axis::row,
                         .spacing = 10,
                         .children = {{.id = "icon:" + app.bundleID,
                                       .content = AppIcon{.bundleID = app.bundleID, .points = appIconWidth}},
                                      view::column("lines:" + app.bundleID, std::move(lines), 4)}}};
}

/// Shows the user where the icon is; while it shows, the button stops that. It stays the same control, so
/// that it keeps the keyboard's focus.
Node showButton(AppController& controller, const PresentApp& app) {
    if (controller.values().showingMe == app.bundleID) {
        return answer("show", app, "Stop showing", [&controller] { controller.showMe().stop(); });
    }
    return {.id = "show:" + app.bundleID,
            .label = "Show me: " + app.name,
            .help = "Shows only this icon for a moment",
            .isEnabled = isPresent(controller.values(), app.bundleID),
            .content = Button{.symbol = "eye", .press = [&controller, bundleID = app.bundleID] {
                                  controller.showMe().start(bundleID);
                              }}};
}

Node newIconRow(AppController& controller, const PresentApp& app) {
    const auto place = [&](const std::string& what, const std::string& title, Section section) {
        return answer(what, app, title, [&controller, bundleID = app.bundleID, section] {
            controller.place(bundleID, section);
        });
    };
    return appRow(app,
                  {view::text("what:" + app.bundleID, app.name + " just moved in", Text::Style::headline)},
                  {place("keep", "Keep in the bar", Section::bar), place("tuck", "Tuck", Section::tucked),
                   place("bury", "Bury", Section::buried), showButton(controller, app)});
}

std::string acceptTitle(const TidySuggestion& suggestion) {
    const auto* const move = std::get_if<TidySuggestion::MoveTo>(&suggestion.change);
    if (move == nullptr) {
        return "Quit";
    }
    return move->section == Section::bar ? "Move to the bar" : placingTitle(move->section);
}

Node suggestionRow(AppController& controller, const PresentApp& app, const TidySuggestion& suggestion) {
    Node always = answer("always", app, "Always keep here", [&controller, bundleID = app.bundleID] {
        controller.autopilot().alwaysKeep(bundleID);
    });
    always.help = "Autopilot won't suggest moving this app again";
    return appRow(
        app,
        {view::text("what:" + app.bundleID, app.name, Text::Style::headline),
         view::explanation("why:" + app.bundleID, describe(suggestion.reason))},
        {answer("accept", app, acceptTitle(suggestion),
                [&controller, suggestion] { controller.autopilot().accept(suggestion); }),
         answer("later", app, "Maybe later",
                [&controller, bundleID = app.bundleID] { controller.autopilot().dismiss(bundleID); }),
         std::move(always)});
}

void addNewIcons(std::vector<Node>& list, AppController& controller, const std::vector<PresentApp>& apps) {
    const bool isOne = apps.size() == 1;
    list.push_back(view::text("arrivals", isOne ? "New arrival" : "New arrivals", Text::Style::title));
    list.push_back(
        view::explanation("arrivals-line", isOne ? "Waiting by the door until you choose where it goes."
                                                 : "Waiting by the door until you choose where they go."));
    for (const PresentApp& app : apps) {
        list.push_back(newIconRow(controller, app));
    }
}

void addSuggestions(std::vector<Node>& list, const FaceParts& parts,
                    const std::vector<TidySuggestion>& suggestions) {
    const AppNames names(parts.controller.values(), parts.platform.workspace);
    list.push_back(view::text("suggestions", "Tidy suggestions", Text::Style::title));
    list.push_back(
        view::explanation("suggestions-line", "Based on what you click. Nothing moves until you say so."));
    for (const TidySuggestion& suggestion : suggestions) {
        const BundleID& bundleID = suggestion.bundleID;
        list.push_back(
            suggestionRow(parts.controller, {.bundleID = bundleID, .name = names.of(bundleID)}, suggestion));
    }
}

Node spotlessLine() {
    Node sparkles{
        .id = "sparkles",
        .content = view::Symbol{.name = "sparkles", .points = sparklesWidth, .ink = view::Ink::sparkle}};
    return view::row(
        "spotless", {std::move(sparkles), view::text("spotless-line", spotlessWords, Text::Style::headline)});
}

Node questionList(const FaceParts& parts, const NoteQuestions& questions) {
    std::vector<Node> list;
    if (!questions.newIcons.empty()) {
        addNewIcons(list, parts.controller, questions.newIcons);
    }
    if (!questions.newIcons.empty() && !questions.suggestions.empty()) {
        list.push_back({.id = "between", .content = view::Divider{}});
    }
    if (!questions.suggestions.empty()) {
        addSuggestions(list, parts, questions.suggestions);
    }
    return {.id = "questions",
            .content =
                view::Scroll{.height = longestList, .children = {view::column("list", std::move(list), 10)}}};
}

}  // namespace

NoteQuestions noteQuestions(const FaceParts& parts) {
    const AppValues& values = parts.controller.values();
    const AppNames names(values, parts.platform.workspace);
    NoteQuestions questions{.newIcons = {}, .suggestions = parts.controller.autopilot().suggestions()};
    for (const BundleID& bundleID : values.layout.inbox) {
        questions.newIcons.push_back({.bundleID = bundleID, .name = names.of(bundleID)});
    }
    return questions;
}

Node noteView(const FaceParts& parts, const NoteQuestions& questions, const std::function<void()>& close) {
    const bool isDone = questions.areAnswered();
    const Shortcut::Key key = isDone ? Shortcut::Key::enter : Shortcut::Key::escape;
    Node closing = view::button("close", {.title = isDone ? "Done" : "Later",
                                          .style = isDone ? Button::Style::primary : Button::Style::standard,
                                          .shortcut = {.key = key},
                                          .press = close});
    return {.id = "note",
            .width = noteWidth,
            .content = Stack{
                .spacing = 14,
                .padding = 16,
                .children = {isDone ? spotlessLine() : questionList(parts, questions),
                             view::row("closing", {view::spacer("closing-room"), std::move(closing)})}}};
}

}  // namespace velko
