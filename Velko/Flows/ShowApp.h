#pragma once

#include <functional>

#include "Velko/Flows/FlowHost.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoCore/Visibility/RevealState.h"
#include "VelkoEngine/Opening/ItemOpener.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class Log;

/// Opens the menu of an app whose icon is hidden: lets it out, presses it, and hides it again when its menu
/// has closed. Main thread; owned by the controller.
class PeekOpening final : private NonCopyable {
 public:
    /// `handle` moves the reveal state.
    PeekOpening(FlowHost& host, const Platform& platform, Log& log,
                std::function<void(const RevealEvent&)> handle);

    /// Opens that app. Another that was open is not waited for any more. `onPress` is told what came of
    /// pressing its icon, within half a second; without it, `failedOpening` tells of a failure.
    void open(const BundleID& bundleID, std::function<void(ItemOpener::Press)> onPress = {});

 private:
    void pressed(const BundleID& bundleID, ItemOpener::Press press);

    FlowHost& host_;
    Platform platform_;
    Log& log_;
    std::function<void(const RevealEvent&)> handle_;
    ItemOpener opener_;
    Task failureShown_;
};

/// Helps the user find one app's icon: for a moment it stands alone. Main thread; owned by the controller.
class ShowMe final : private NonCopyable {
 public:
    ShowMe(FlowHost& host, const Platform& platform, Log& log);

    /// Shows that app's icons; another app's, if they were being shown, are not any more.
    void start(const BundleID& bundleID);

    /// Ends it early. Whether there was something to end.
    bool stop();
    /// The same. Does not apply.
    void forget();

 private:
    void end(const char* reason);

    FlowHost& host_;
    Platform platform_;
    Log& log_;
    Task wait_;
};

}  // namespace velko
