#pragma once

#include <functional>
#include <map>

#include "Velko/Flows/FlowHost.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoCore/Watching/ChangeDetector.h"
#include "VelkoEngine/MenuBar/Inventory.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// Looks at the tucked icons every two seconds and notices which show something new. Main thread; owned by
/// the controller.
class ChangeWatch final : private NonCopyable {
 public:
    /// `changed` is called for each app that has changed and may pop out.
    ChangeWatch(FlowHost& host, const Platform& platform, std::function<void(const BundleID&)> changed);

    void start();
    void stop() noexcept;

 private:
    void look();
    void compare(const Inventory::Readings& readings);
    [[nodiscard]] bool isWatched(const BundleID& bundleID) const;
    [[nodiscard]] std::map<BundleID, ProcessID> watchedApps() const;

    FlowHost& host_;
    Platform platform_;
    std::function<void(const BundleID&)> changed_;
    ChangeDetector detector_;
    Task loop_;
    Task reading_;
};

}  // namespace velko
