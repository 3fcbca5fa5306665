#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Background/Reads.h"
#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// A diagnostic tool: while it runs, it logs every change of every app's status items. Changes nothing.
/// It reads in the background, so that a hung app holds up nobody. Main thread.
class IconWatch final : private NonCopyable {
 public:
    IconWatch(const Platform& platform, std::function<void(const std::string&)> log);

    /// Looks at once and then at every interval. Nothing happens when it runs already.
    void start();
    /// Forgets all that it has seen. Nothing happens when it does not run.
    void stop();
    [[nodiscard]] bool isRunning() const noexcept { return poll_.isPending(); }

 private:
    /// An app that owns status items, as one look finds it.
    struct SeenApp {
        BundleID bundleID;
        ProcessID pid = 0;
        std::string text;
        std::vector<AXElement> items;
    };
    /// An app that was there at the last look.
    struct Watched {
        ProcessID pid = 0;
        std::string text;
        std::vector<AXElement> items{};  ///< as they were when its process was first seen
        std::unique_ptr<AXObserver> observer{};
    };
    struct Notification {
        std::string name;
        AXElement element;
    };
    struct Notified {
        std::string name;
        std::optional<ProcessID> pid;
        std::string title;
    };

    void look();
    void readApps(const std::set<ProcessID>& visiblePIDs);
    void compare(std::vector<SeenApp> seen);
    void logNotified(const Notified& notified) const;
    void observeNext();
    void observe(const BundleID& bundleID);
    [[nodiscard]] bool registerItems(AXObserver& observer, const std::vector<AXElement>& items) const;

    Platform platform_;
    std::function<void(const std::string&)> log_;
    ReadsInTurn<Notification, Notified> titles_;
    std::map<BundleID, Watched> last_;
    Task poll_;
    Task reading_;
    std::deque<BundleID> unobserved_;  ///< whose notifications are still to be asked for
    Task observing_;
};

}  // namespace velko
