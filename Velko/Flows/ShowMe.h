#pragma once

#include "Velko/Flows/FlowHost.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class Log;

/// Helps the user find one app's icon: for a moment it stands alone. Main thread; owned by the controller.
class ShowMe final : private NonCopyable {
 public:
    ShowMe(FlowHost& host, const Platform& platform, Log& log);

    /// Shows that app's icons; another app's, if they were being shown, are not any more.
    void start(const BundleID& bundleID);

    /// Ends it early. Whether there was something to end.
    bool stop();

    /// Forgets the end that is to come.
    void cancel() noexcept { wait_.cancel(); }

 private:
    void end(const char* reason);

    FlowHost& host_;
    Platform platform_;
    Log& log_;
    Task wait_;
};

}  // namespace velko
