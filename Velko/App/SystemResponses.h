#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Velko/Flows/FlowHost.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Hiding/MenuBarEngine.h"

namespace velko {

class Log;
class Surfaces;
class Visibility;
struct Flows;
struct KnownBar;

/// What Velko does when the system or another app has changed something: it applies the plan anew, reads the
/// menu bar, and listens for clicks again. Main thread; owned by the controller.
class SystemResponses final : private NonCopyable {
 public:
    struct Parts {
        FlowHost& host;
        Surfaces& surfaces;
        Log& log;
        const MenuBarEngine& engine;
        Visibility& visibility;
        Flows& flows;
    };

    explicit SystemResponses(const Parts& parts) : parts_(parts) {}

    /// Something has happened on the Mac. `light`: to its apps alone, and not to its displays, Spaces,
    /// session or sleep.
    void handleSystemEvent(const std::string& reason, bool light);
    /// The user has given the Accessibility permission, or taken it.
    void trustChanged(bool trusted);
    /// A scan has been answered.
    void accept(std::vector<MenuBarItem> items, ScanDepth depth);
    /// Nothing has happened for a while: looks for what nobody tells of.
    void rescanIfQuiet();
    /// What is known of the menu bar by the last scan, for a click at this moment; `broom` as `KnownBar` has
    /// it.
    [[nodiscard]] KnownBar knownBar(std::optional<Rect> broom) const;

 private:
    Parts parts_;
};

}  // namespace velko
