#include "Velko/Settings/EarlierLayoutsWindow.h"

#include <utility>

#include "Velko/App/AppController.h"
#include "Velko/Apps/UndoLine.h"
#include "Velko/Flows/EarlierLayouts.h"
#include "VelkoEngine/Text/Text.h"

namespace velko {

namespace {

// Points
constexpr double historyWidth = 560;
constexpr double historyPadding = 20;
constexpr double historyHeight = 420;

std::string asSentenceStart(std::string words) {
    if (!words.empty() && words.front() >= 'a' && words.front() <= 'z') {
        words.front() = static_cast<char>(words.front() - 'a' + 'A');
    }
    return words;
}

view::Node warning(const std::string& id, std::string words) {
    return view::row(
        id, {{.id = id + ":mark",
              .content =
                  view::Symbol{.name = "exclamationmark.triangle", .points = 14, .ink = view::Ink::warning}},
             view::explanation(id + ":what", std::move(words))});
}

}  // namespace

EarlierLayoutsWindow::EarlierLayoutsWindow(const FaceParts& parts)
    : parts_(parts), window_(parts.ports.surfaces, Surfaces::Kind::history) {}

void EarlierLayoutsWindow::show() {
    look();
    failure_.reset();
    if (window_.isOpen()) {
        window_.raise();
        window_.update(tree());
        return;
    }
    undoableSince_ = parts_.controller.values().history.revision();
    window_.open({.content = tree(), .closed = [] {}}, parts_.controller.observe([this] { update(); }));
}

void EarlierLayoutsWindow::look() {
    revision_ = parts_.controller.values().historyRevision;
    found_ = parts_.controller.earlierLayouts().list();
}

void EarlierLayoutsWindow::update() {
    if (!window_.isOpen()) {
        return;
    }
    if (revision_ != parts_.controller.values().historyRevision) {
        look();
    }
    window_.update(tree());
}

void EarlierLayoutsWindow::restore(const HistoryEntry& entry) {
    const auto done = parts_.controller.earlierLayouts().restore(entry.number);
    failure_ = done ? std::nullopt : std::optional(done.error());
    look();
    update();
}

view::Node EarlierLayoutsWindow::row(const EarlierLayout& earlier) {
    const EarlierLayouts& flow = parts_.controller.earlierLayouts();
    const std::string id = "history:" + std::to_string(earlier.entry.number);
    const std::string title = flow.title(earlier.entry);
    view::Node button = view::button(
        id + ":restore", {.title = "Restore", .press = [this, entry = earlier.entry] { restore(entry); }});
    button.label = "Restore the layout of " + title;
    button.isEnabled = earlier.layout.has_value();
    view::Node words =
        view::column(id + ":words",
                     {view::text(id + ":title", asSentenceStart(title), view::Text::Style::headline),
                      view::explanation(id + ":what", printable(flow.inWords(earlier)))},
                     2);
    words.width = historyWidth - 2 * historyPadding - 130;
    return view::row(id, {std::move(words), view::spacer(id + ":gap"), std::move(button)});
}

std::vector<view::Node> EarlierLayoutsWindow::rows() {
    if (!found_) {
        return {warning("history:fault", found_.error().description)};
    }
    if (found_->empty()) {
        return {view::text("history:none", "There is none yet.")};
    }
    std::vector<view::Node> rows;
    rows.reserve(found_->size());
    for (const EarlierLayout& earlier : *found_) {
        rows.push_back(row(earlier));
    }
    return rows;
}

view::Node EarlierLayoutsWindow::tree() {
    std::vector<view::Node> children{
        view::explanation("history:about",
                          "Velko keeps your layout as it was before you import, sort or restore one, and "
                          "before your first change of a day. The newest " +
                              std::to_string(LayoutHistory::most) + " stay.")};
    if (const auto& failure = parts_.controller.values().historyFailure) {
        children.push_back(
            warning("history:unkept", "Your last change has no way back to here: " + *failure));
    }
    if (failure_) {
        children.push_back(warning("history:failed", *failure_));
    }
    if (auto line = undoLine(parts_.controller, undoableSince_)) {
        children.push_back(*std::move(line));
    }
    std::vector<view::Node> listed = rows();
    if (found_ && !found_->empty()) {
        children.push_back(
            {.id = "history:list",
             .label = "Earlier layouts",
             .content = view::Scroll{.height = historyHeight,
                                     .children = {view::column("history:rows", std::move(listed), 12)}}});
    } else {
        children.push_back(std::move(listed.front()));
    }
    return {
        .id = "history",
        .width = historyWidth,
        .content = view::Stack{.spacing = 12, .padding = historyPadding, .children = std::move(children)}};
}

}  // namespace velko
