#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "VelkoCore/Layout/Layout.h"

namespace velko {

/// What is about to change the layout when it is kept for later: a change like any other, or one that
/// concerns much of it at once.
enum class HistoryCause { change, import, sort, freshStart, restore };

/// Makes in `layout` every difference that there is from one layout to another. What is the same in both
/// stays as it is in `layout`: clicks and new apps that came meanwhile are not lost.
void carryOver(Layout& layout, const Layout& from, const Layout& to);

/// What the user has changed in the layout, to be taken back and done again. Pure value.
class UndoHistory final {
 public:
    /// The most changes that are kept.
    static constexpr std::size_t longest = 50;

    struct Change {
        std::string title;  ///< as a menu says it after "Undo": "Tuck Slack"
        std::string done;   ///< what has come of it, as a sentence: "Slack is tucked."
        HistoryCause cause = HistoryCause::change;  ///< why the layout before it may be kept as a file
    };

    /// Keeps a change that was made. What was taken back before can't be done again from now on. A change
    /// that changes nothing is not kept.
    void record(Change change, const Layout& before, const Layout& after);

    /// The change that `undo` takes back, or `redo` does again; null when there is none.
    [[nodiscard]] const Change* undoable() const { return done_.empty() ? nullptr : &done_.back().change; }
    [[nodiscard]] const Change* redoable() const {
        return undone_.empty() ? nullptr : &undone_.back().change;
    }

    /// Takes back the last change, or does again what was taken back last. Returns whether there was one.
    bool undo(Layout& layout);
    bool redo(Layout& layout);

    /// Forgets everything, because another layout takes the place of this one.
    void clear();

    /// Grows with each change, undo and redo. It tells a view whether something has happened since.
    [[nodiscard]] std::size_t revision() const noexcept { return revision_; }

    /// Whether the last that happened was an undo.
    [[nodiscard]] bool hasJustUndone() const noexcept { return hasJustUndone_; }

    bool operator==(const UndoHistory& other) const { return revision_ == other.revision_; }

 private:
    /// The layouts never change, so copies of the history share them.
    struct Step {
        Change change;
        std::shared_ptr<const Layout> before;
        std::shared_ptr<const Layout> after;
    };

    std::vector<Step> done_;    ///< the last one is undone first
    std::vector<Step> undone_;  ///< the last one is redone first
    std::size_t revision_ = 0;
    bool hasJustUndone_ = false;
};

}  // namespace velko
