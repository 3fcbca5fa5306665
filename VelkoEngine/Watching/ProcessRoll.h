#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "VelkoCore/Identifiers.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

/// Which applications have come and gone, from two sources of which neither is complete: notices, which the
/// system sends for regular apps only, and the list of running applications, which holds much that can have
/// no icon. Each launch and each end counts once, whichever source tells of it first. A value; main thread.
class ProcessRoll final {
 public:
    struct Event {
        bool isLaunch = false;
        std::string app;  ///< its identifier, or "?"

        bool operator==(const Event&) const = default;
    };
    using Events = std::vector<Event>;

    /// `listed`: the running applications that are no news.
    explicit ProcessRoll(const std::vector<RunningApplication>& listed);

    /// What has happened by a list of running applications. Only apps that may have icons come by it alone.
    [[nodiscard]] Events compare(const std::vector<RunningApplication>& listed);

    /// What a notice of a launch or an end tells that is not known yet, the list having been compared.
    [[nodiscard]] Events hear(const WorkspaceNotice& notice);

    /// Notices that come from now on are about something new.
    void beginBurst() { ended_.clear(); }

 private:
    struct Entry {
        std::string app;
        bool isListed = false;  ///< the list has held it
        bool hasEnded = false;  ///< though the list still holds it
    };
    struct End {
        ProcessID pid = 0;
        std::string app;
    };

    [[nodiscard]] Events hearLaunch(const WorkspaceNotice& notice);
    [[nodiscard]] Events hearEnd(const WorkspaceNotice& notice);
    [[nodiscard]] bool isKnownEnd(const WorkspaceNotice& notice) const;

    std::map<ProcessID, Entry> entries_;
    std::vector<End> ended_;  ///< in this burst
};

}  // namespace velko
