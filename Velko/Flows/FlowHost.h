#pragma once

#include <functional>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

#include "Velko/App/AppValues.h"
#include "VelkoCore/NonCopyable.h"

namespace velko {

/// A request to make visible what should be.
struct ApplyRequest {
    std::string reason;  ///< for the log
    bool force = false;  ///< sends the plan even when it is in force already
};

/// When an edit of the layout gets to the file.
enum class Saving {
    now,              ///< the user's own edits: at once, even over a file that could not be read
    nowUnlessBroken,  ///< Velko's own: at once, but never over a file that could not be read
    soon,             ///< in a burst with others, and never over a file that could not be read
};

/// How much of the menu bar is read: everything, or only apps whose items are not known yet.
enum class ScanDepth { full, light };

/// Ends the program when the caller is not on the main thread: it is about to touch what belongs there.
void requireMainThread(const MainThread& thread);

/// The controller as its flows see it: the values, and the few ways to change something. Main thread;
/// outlives every flow.
class FlowHost : private NonCopyable {
 public:
    using Edit = std::function<void(Layout&)>;

    [[nodiscard]] virtual const AppValues& values() const noexcept = 0;

    /// Sets a value; observers hear of it only when it differs. Whether it did.
    template <class Value>
    bool set(Value AppValues::* value, std::type_identity_t<Value> to) {
        Value& now = writableValues().*value;
        if (now == to) {
            return false;
        }
        now = std::move(to);
        valueChanged();
        return true;
    }

    /// Sets one of the problems that make Velko show everything.
    template <class Fact>
    void setHealth(Fact HealthFacts::* fact, std::type_identity_t<Fact> to) {
        HealthFacts problems = values().problems;
        problems.*fact = std::move(to);
        set(&AppValues::problems, std::move(problems));
    }

    /// The layout as the user has decided it: what is saved, exported and kept.
    [[nodiscard]] virtual const Layout& ownLayout() const noexcept = 0;

    /// Edits the layout that holds. What is managed stays as it is, in the user's own layout too. One of
    /// Velko's own edits is saved only if it changed something. Whether the file now holds the layout.
    virtual bool edit(Saving saving, const Edit& change) = 0;

    /// An edit of the user's own, saved at once, that they can take back. Whether the file now holds the
    /// layout.
    virtual bool edit(UndoHistory::Change undoable, const Edit& change) = 0;

    /// Computes the plan and hands it to the engine.
    virtual void apply(ApplyRequest request) = 0;

    /// When the applied plan last changed.
    [[nodiscard]] virtual std::optional<Uptime> lastHidingChange() const noexcept = 0;

 protected:
    ~FlowHost() = default;

    [[nodiscard]] virtual AppValues& writableValues() noexcept = 0;
    virtual void valueChanged() = 0;
};

}  // namespace velko
