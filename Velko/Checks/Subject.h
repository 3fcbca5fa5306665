#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "Velko/App/AppValues.h"
#include "Velko/Checks/Notes.h"
#include "Velko/Checks/RenderingCheck.h"
#include "VelkoCore/Import/PropertyList.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Contracts/Contracts.h"
#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/Platform.h"

namespace velko {
class HotKeys;
}

namespace velko::SelfCheck {

/// What only the self-check needs of a Mac. Main thread.
class Bench : private NonCopyable {
 public:
    virtual ~Bench() = default;

    /// Starts this program once more, as a process that runs `hideForOthers`. Returns whether it has started.
    [[nodiscard]] virtual bool startHider() = 0;
    /// Kills that process without a warning. Returns after it has ended.
    virtual void killHider() = 0;
};

/// What the check works on. Everything outlives it.
struct Subject {
    Platform platform;
    const PropertyListReader& propertyLists;
    HotKeys& hotKeys;
    AppInfo info;
    std::filesystem::path layoutFile;
    std::filesystem::path logFile;
    Contracts::Pass pass;
    RenderingCheck::Draw draw{};  ///< absent: nothing is drawn
    Bench* bench = nullptr;       ///< null: sections that need it say so
};

}  // namespace velko::SelfCheck

/// The sections, in a few files. Each adds to the notes what it finds, and leaves everything as it was.
namespace velko::SelfCheck {

void checkPermission(const Subject& subject, Notes& notes);
void checkMenuBar(const Subject& subject, Notes& notes);
void checkFramework(const Subject& subject, Notes& notes);
/// Hides every icon but the system's and Velko's own, for five seconds, and then once more in a process that
/// is killed.
void tryHiding(const Subject& subject, Notes& notes);

/// Hides every icon but the system's and Velko's own until it is killed, or for some seconds if nobody kills
/// it. Returns the exit status of the process.
[[nodiscard]] int hideForOthers(const Subject& subject);

}  // namespace velko::SelfCheck

/// What several sections need.
namespace velko::SelfCheck {

/// Whether the system says that Velko may read other apps, and another app has proved it. Only then a section
/// may do what would otherwise make the system ask the user.
[[nodiscard]] bool isSurelyTrusted(const Platform& platform);

/// Lets time pass until something holds. Returns whether it did within the time.
[[nodiscard]] bool waitUntil(const Subject& subject, MainThread::Uptime atMost,
                             const std::function<bool()>& holds);

/// "cannotComplete", or the number of an error without a name.
[[nodiscard]] std::string nameOf(AXError error);

/// "12.3 ms".
[[nodiscard]] std::string milliseconds(MainThread::Uptime time);

/// "12,0 30x24": left, top, width and height in whole points.
[[nodiscard]] std::string placeOf(const Rect& frame);

/// An app's identifier, or else the name of the process.
[[nodiscard]] std::string nameOf(const Platform& platform, ProcessID pid);

}  // namespace velko::SelfCheck
