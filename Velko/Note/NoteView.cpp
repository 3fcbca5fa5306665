#include "Velko/Note/NoteView.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "Velko/App/AppController.h"
#include "Velko/Apps/UndoLine.h"
#include "Velko/Flows/Questions.h"
#include "Velko/Flows/ShowApp.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoEngine/Text/Text.h"

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
            .label = title + ": " + isolated(app.name),
            .content = Button{.title = title, .press = std::move(press)}};
}

/// Lets the digits press the buttons of the first question, in their order. Each says so.
void giveDigits(std::vector<Node>& buttons) {
    constexpr std::size_t digits = 3;
    for (std::size_t index = 0; index < std::min(digits, buttons.size()); ++index) {
        if (auto* const button = std::get_if<Button>(&buttons[index].content)) {
            const std::string digit = std::to_string(index + 1);
            button->symbol = digit + ".circle";
            button->shortcut = {.key = Shortcut::Key::character, .character = digit.front()};
            std::string& help = buttons[index].help;
            help += (help.empty() ? "Press " : ". Press ") + digit;
        }
    }
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

constexpr auto absentInWords = "It has no icon in the menu bar right now, so there is none to show.";

/// Shows the user where the icon is; while it shows, the button stops that. It stays the same control, so
/// that it keeps the keyboard's focus.
Node showButton(AppController& controller, const PresentApp& app) {
    if (controller.values().showingMe == app.bundleID) {
        return answer("show", app, "Stop showing", [&controller] { controller.showMe().stop(); });
    }
    const bool hasIcon = isPresent(controller.values(), app.bundleID);
    return {.id = "show:" + app.bundleID,
            .label = "Show me: " + isolated(app.name),
            .help = hasIcon ? "Shows only this icon for a moment" : absentInWords,
            .isEnabled = hasIcon,
            .content = Button{.symbol = "eye", .press = [&controller, bundleID = app.bundleID] {
                                  controller.showMe().start(bundleID);
                              }}};
}

Node newIconRow(AppController& controller, const PresentApp& app, bool isFirst) {
    const auto place = [&](const std::string& what, const std::string& title, Section section) {
        return answer(what, app, title, [&controller, bundleID = app.bundleID, section] {
            controller.place(bundleID, section);
        });
    };
    std::vector<Node> lines{
        view::text("what:" + app.bundleID, isolated(app.name) + " just moved in", Text::Style::headline)};
    if (!isPresent(controller.values(), app.bundleID)) {
        lines.push_back(view::explanation("absent:" + app.bundleID, absentInWords));
    }
    std::vector<Node> buttons{place("keep", "Keep in the bar", Section::bar),
                              place("tuck", "Tuck", Section::tucked), place("bury", "Bury", Section::buried)};
    if (isFirst) {
        giveDigits(buttons);
    }
    buttons.push_back(showButton(controller, app));
    return appRow(app, std::move(lines), std::move(buttons));
}

std::string acceptTitle(const TidySuggestion& suggestion) {
    const auto* const move = std::get_if<TidySuggestion::MoveTo>(&suggestion.change);
    if (move == nullptr) {
        return "Quit";
    }
    return move->section == Section::bar ? "Move to the bar" : placingTitle(move->section);
}

Node suggestionRow(AppController& controller, const PresentApp& app, const TidySuggestion& suggestion,
                   bool isFirst) {
    Node always = answer("always", app, "Always keep here", [&controller, bundleID = app.bundleID] {
        controller.autopilot().alwaysKeep(bundleID);
    });
    always.help = "Autopilot won't suggest moving this app again";
    std::vector<Node> buttons{
        answer("accept", app, acceptTitle(suggestion),
               [&controller, suggestion] { controller.autopilot().accept(suggestion); }),
        answer("later", app, "Maybe later",
               [&controller, bundleID = app.bundleID] { controller.autopilot().dismiss(bundleID); }),
        std::move(always)};
    if (isFirst) {
        giveDigits(buttons);
    }
    return appRow(app,
                  {view::text("what:" + app.bundleID, app.name, Text::Style::headline),
                   view::explanation("why:" + app.bundleID, describe(suggestion.reason))},
                  std::move(buttons));
}

/// Answers for all new icons.
Node allNewIcons(AppController& controller, const std::vector<PresentApp>& apps) {
    BundleIDs all;
    for (const PresentApp& app : apps) {
        all.insert(app.bundleID);
    }
    const auto place = [&](std::string id, std::string title, std::string help, Section section) {
        Node node = view::button(std::move(id),
                                 {.title = std::move(title),
                                  .press = [&controller, all, section] { controller.place(all, section); }});
        node.help = std::move(help);
        return node;
    };
    const std::string count = std::to_string(apps.size());
    return view::row("all-arrivals",
                     {place("keep-all", "Keep all", "Keeps all " + count + " in the bar", Section::bar),
                      place("tuck-all", "Tuck all", "Tucks all " + count, Section::tucked)});
}

/// Does everything that is suggested. It says what, because apps may quit.
Node allSuggestions(AppController& controller, const std::vector<TidySuggestion>& suggestions) {
    std::size_t quits = 0;
    for (const TidySuggestion& suggestion : suggestions) {
        quits += std::holds_alternative<TidySuggestion::MoveTo>(suggestion.change) ? 0U : 1U;
    }
    Node node = view::button("accept-all", {.title = "Accept all", .press = [&controller, suggestions] {
                                                for (const TidySuggestion& suggestion : suggestions) {
                                                    controller.autopilot().accept(suggestion);
                                                }
                                            }});
    node.help = "Does all that is suggested below";
    if (quits > 0) {
        node.help += quits == 1 ? ", and asks one app to quit"
                                : ", and asks " + std::to_string(quits) + " apps to quit";
    }
    return node;
}

void addNewIcons(std::vector<Node>& list, AppController& controller, const std::vector<PresentApp>& apps) {
    const bool isOne = apps.size() == 1;
    list.push_back(view::text("arrivals", isOne ? "New arrival" : "New arrivals", Text::Style::title));
    list.push_back(
        view::explanation("arrivals-line", isOne ? "Waiting by the door until you choose where it goes."
                                                 : "Waiting by the door until you choose where they go."));
    if (!isOne) {
        list.push_back(allNewIcons(controller, apps));
    }
    for (const PresentApp& app : apps) {
        list.push_back(newIconRow(controller, app, &app == &apps.front()));
    }
}

void addSuggestions(std::vector<Node>& list, const FaceParts& parts,
                    const std::vector<TidySuggestion>& suggestions, bool isFirst) {
    const AppNames names(parts.controller.values(), parts.platform.workspace);
    list.push_back(view::text("suggestions", "Tidy suggestions", Text::Style::title));
    list.push_back(
        view::explanation("suggestions-line", "Based on what you click. Nothing moves until you say so."));
    if (suggestions.size() > 1) {
        list.push_back(allSuggestions(parts.controller, suggestions));
    }
    for (const TidySuggestion& suggestion : suggestions) {
        const BundleID& bundleID = suggestion.bundleID;
        list.push_back(suggestionRow(parts.controller, {.bundleID = bundleID, .name = names.of(bundleID)},
                                     suggestion, isFirst && &suggestion == &suggestions.front()));
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
        addSuggestions(list, parts, questions.suggestions, questions.newIcons.empty());
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

Node noteView(const FaceParts& parts, const NoteQuestions& questions, std::size_t since,
              const std::function<void()>& close) {
    const bool isDone = questions.areAnswered();
    const Shortcut::Key key = isDone ? Shortcut::Key::enter : Shortcut::Key::escape;
    Node closing = view::button("close", {.title = isDone ? "Done" : "Later",
                                          .style = isDone ? Button::Style::primary : Button::Style::standard,
                                          .shortcut = {.key = key},
                                          .press = close});
    std::vector<Node> foot;
    if (auto undo = isDone ? std::nullopt : undoLine(parts.controller, since)) {
        foot.push_back(*std::move(undo));
    }
    foot.push_back(view::spacer("closing-room"));
    foot.push_back(std::move(closing));
    return {.id = "note",
            .width = noteWidth,
            .content = Stack{.spacing = 14,
                             .padding = 16,
                             .children = {isDone ? spotlessLine() : questionList(parts, questions),
                                          view::row("closing", std::move(foot))}}};
}

}  // namespace velko
