#pragma once

#include <functional>

#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoCore/Visibility/RevealState.h"
#include "VelkoEngine/Opening/ItemOpener.h"
#include "VelkoEngine/Ports/Platform.h"

namespace velko {

class Log;

/// Opens the menu of an app whose icon is hidden: lets it out, presses it, and hides it again when its menu
/// has closed. Main thread; owned by the controller.
class PeekOpening final : private NonCopyable {
 public:
    /// `handle` moves the reveal state.
    PeekOpening(const Platform& platform, Log& log, std::function<void(const RevealEvent&)> handle);

    /// Opens that app. Another that was open is not waited for any more.
    void open(const BundleID& bundleID);

    void cancel() { opener_.cancel(); }

 private:
    Log& log_;
    std::function<void(const RevealEvent&)> handle_;
    ItemOpener opener_;
};

}  // namespace velko
