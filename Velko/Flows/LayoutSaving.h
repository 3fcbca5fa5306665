#pragma once

#include <optional>
#include <string>

#include "Velko/Flows/FlowHost.h"
#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Layout/LayoutStore.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class Log;

/// Reads the layout from its file and writes it: at once, or a while after the last of a burst of edits. A
/// file that could not be read is put aside before it is replaced. Main thread; owned by the controller.
class LayoutSaving final : private NonCopyable {
 public:
    /// All references outlive this; the host's layout is read at the moment of each save.
    LayoutSaving(FlowHost& host, MainThread& mainThread, Log& log, const LayoutStore& store);

    /// What loading came to.
    struct Loaded {
        Layout layout;                       ///< a fresh one where there is none to read
        std::optional<std::string> failure;  ///< why there is nothing to go by, in words
    };

    /// Reads the file, or makes one where there is none. A save still to come is forgotten.
    [[nodiscard]] Loaded load();

    /// Saves `Timing::saveDelay` from now, or later when another edit comes before.
    void schedule();

    /// Saves now; a failure is logged, the layout in memory stays, and so does a save still to come. Whether
    /// the file now holds the layout.
    bool saveNow();

    /// Saves now what was to be saved later or could not be saved, if anything.
    void finish();

 private:
    // Each says why it failed.
    [[nodiscard]] std::optional<std::string> write();
    [[nodiscard]] std::optional<std::string> putUnreadableFileAside();

    FlowHost& host_;
    MainThread& mainThread_;
    Log& log_;
    const LayoutStore& store_;
    bool fileUnreadable_ = false;  ///< the file holds what could not be read, and the next save keeps it
    Task pending_;
};

}  // namespace velko
