#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Platform.h"

namespace velko {

/// Presses an app's first status item, so that its menu opens, and reports when that menu has closed again.
/// Does not change what is visible: the caller shows the icon before and hides it afterwards. One opening at
/// a time. Main thread; nothing that it has registered outlives it.
class ItemOpener final : private NonCopyable {
 public:
    explicit ItemOpener(const Platform& platform);
    ~ItemOpener();

    /// What came of pressing the app's icon.
    enum class Press {
        menuOpens,
        notRunning,
        unanswered,  ///< it shows no icon, or does not answer
    };

    /// What to open, and whom to tell.
    struct Request {
        BundleID bundleID;
        std::function<void(const std::string&)> log;  ///< receives progress lines
        std::function<void()> onClose;                ///< called once when the opening ends by itself
        std::function<void(Press)> onPress{};         ///< called once, before `onClose`
    };

    /// Starts an opening. One in progress is superseded: its `onClose` is never called. When the app does
    /// not run, `onClose` is called before this returns.
    void open(Request request);

    /// Ends the opening in progress without calling its `onClose`. An opening that still waits for its icon
    /// goes on: it opens the menu, and nobody is told when the menu closes.
    void cancel();

 private:
    class Opening;

    Platform platform_;
    std::vector<std::shared_ptr<Opening>> openings_;  ///< all that have not ended, superseded ones too
    std::weak_ptr<Opening> current_;
};

/// Whether another process shows a pop-up menu right now; this program's own menus never count.
[[nodiscard]] bool isAnyMenuOpen(const Platform& platform);

}  // namespace velko
