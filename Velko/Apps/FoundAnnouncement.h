#pragma once

#include <cstddef>
#include <string>

#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class MainThread;
class Surfaces;

/// Lets a screen reader say how many apps a search has found. The keyboard stays in the field, so it does not
/// look at what was found. It says so when the user pauses: words for each key would only interrupt each
/// other. Main thread.
class FoundAnnouncement final : private NonCopyable {
 public:
    /// Both outlive this.
    FoundAnnouncement(MainThread& mainThread, Surfaces& surfaces)
        : mainThread_(mainThread), surfaces_(surfaces) {}

    /// The search has found so many. `first` says which one Return opens; empty: none.
    void found(std::size_t count, const std::string& first = {});

    /// The user has typed this, which has found so many. An empty text searches for nothing.
    void typed(const std::string& text, std::size_t count);

    /// Nobody searches any more, or something else is to be said.
    void cancel() { pause_ = {}; }

 private:
    MainThread& mainThread_;
    Surfaces& surfaces_;
    Task pause_;
};

}  // namespace velko
