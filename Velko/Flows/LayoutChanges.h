#pragma once

#include <functional>
#include <map>

#include "Velko/Apps/ChangeWords.h"
#include "Velko/Flows/FlowHost.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/NonCopyable.h"

namespace velko {

class AutopilotOffers;
class Log;
class PopOut;
class Workspace;

/// The user's own changes of where apps go, and what takes them back. Each is saved and logged, and takes
/// effect at once. Main thread; owned by the controller.
class LayoutChanges final : private NonCopyable {
 public:
    /// The flows that a change may concern.
    struct Affected {
        PopOut& popOut;
        AutopilotOffers& autopilot;
        std::function<void(const char* reason)> replaced;  ///< much of the layout may be different now
    };

    LayoutChanges(FlowHost& host, const Workspace& workspace, Log& log, Affected affected);

    /// Puts apps into a section. For those that wait in the inbox, this is the answer. Here and below, apps
    /// that the organisation has placed are left out.
    void place(const BundleIDs& wanted, Section section);

    /// Forgets all that the layout knows of these apps. One that is in the menu bar is left out.
    void forget(const BundleIDs& apps);

    /// Puts every app of a finished sort into its section; the setup counts as done.
    void sort(const std::map<BundleID, Section>& sections);

    // Return whether there was anything.
    bool undo();
    bool redo();

 private:
    [[nodiscard]] ChangeWords::Apps inWords(const BundleIDs& apps) const;
    bool go(bool (UndoHistory::*way)(Layout&), const char* word);

    FlowHost& host_;
    const Workspace& workspace_;
    Log& log_;
    Affected affected_;
};

}  // namespace velko
