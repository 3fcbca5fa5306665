#include "Velko/Apps/UndoLine.h"

#include <string>
#include <utility>

#include "Velko/App/AppController.h"

namespace velko {

namespace {

view::Node changeRow(std::string words, std::string title, std::string label, std::function<void()> press) {
    view::Node button = view::button(
        "undo:button",
        {.title = std::move(title), .style = view::Button::Style::link, .press = std::move(press)});
    button.label = std::move(label);
    return view::row("undo", {view::explanation("undo:what", std::move(words)), std::move(button)});
}

}  // namespace

std::optional<view::Node> undoLine(AppController& controller, std::size_t since) {
    const UndoHistory& history = controller.values().history;
    if (history.revision() <= since) {
        return std::nullopt;
    }
    if (const auto* const undone = history.hasJustUndone() ? history.redoable() : nullptr) {
        return changeRow("Taken back: " + undone->title + ".", "Redo", "Redo " + undone->title,
                         [&controller] { controller.redo(); });
    }
    const auto* const done = history.undoable();
    return done == nullptr ? std::nullopt
                           : std::optional(changeRow(done->done, "Undo", "Undo " + done->title,
                                                     [&controller] { controller.undo(); }));
}

}  // namespace velko
