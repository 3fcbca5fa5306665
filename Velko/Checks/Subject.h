#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Velko/App/AppInfo.h"
#include "Velko/Checks/LayoutAudit.h"
#include "Velko/Checks/Notes.h"
#include "Velko/Checks/RenderingCheck.h"
#include "Velko/Ports/StatusItem.h"
#include "Velko/Ports/Surfaces.h"
#include "Velko/View/Node.h"
#include "VelkoCore/Geometry.h"
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

    /// Velko's icon, which is not in the menu bar until it is installed.
    [[nodiscard]] virtual StatusItem& statusItem() = 0;
    /// The frame of the icon's window: origin at the bottom left of the primary screen.
    [[nodiscard]] virtual std::optional<Rect> statusItemWindow() const = 0;
    /// Closes the icon's menu.
    virtual void closeMenu() = 0;
    virtual void removeStatusItem() = 0;

    /// Draws a tree into a view that is in no window, in place of the one before, and measures the views of
    /// its nodes. Writes a picture to a file, unless it is empty. Nothing if the file cannot be written.
    [[nodiscard]] virtual std::optional<std::vector<LayoutAudit::Measured>> drawTree(
        const view::Node& tree, bool isDark, const std::filesystem::path& picture) = 0;
    /// Whether the system has a symbol with that name.
    [[nodiscard]] virtual bool hasSymbol(const std::string& name) const = 0;
    [[nodiscard]] virtual Surfaces& surfaces() = 0;
    /// A line about each window that is open: its title, level, place, and whether it has the keyboard.
    [[nodiscard]] virtual std::vector<std::string> openWindows() const = 0;

    /// What a program of the system has printed, and how it ended; nothing when it cannot be started.
    struct ToolRun {
        int status = 0;
        std::string output;
    };
    /// Runs a program of the system and waits for its end. The first argument is its path.
    [[nodiscard]] virtual std::optional<ToolRun> runTool(std::vector<std::string> arguments) = 0;
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
    RenderingCheck::Draw draw{};       ///< absent: nothing is drawn
    std::filesystem::path pictures{};  ///< the folder for pictures; empty: none are written
    Bench* bench = nullptr;            ///< null: sections that need it say so
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

/// Asks a person to click on an icon of Velko's in several ways, and tells everything about each click.
void askForClicks(const Subject& subject, Notes& notes);
/// Puts an icon of Velko's into the menu bar for some seconds, and opens its menu.
void checkStatusItem(const Subject& subject, Notes& notes);
/// Watches for two minutes how timers come, and which apps tell that their icons have changed.
void watch(const Subject& subject, Notes& notes);
void checkSignature(const Subject& subject, Notes& notes);
/// Draws every surface off screen, and judges how it is laid out.
void checkSurfaces(const Subject& subject, Notes& notes);
/// Opens every surface for a second.
void openSurfaces(const Subject& subject, Notes& notes);

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

/// The words with a comma between them.
[[nodiscard]] std::string joined(const std::vector<std::string>& words);

/// An app's identifier, or else the name of the process.
[[nodiscard]] std::string nameOf(const Platform& platform, ProcessID pid);
[[nodiscard]] std::string namesOf(const Platform& platform, const std::set<ProcessID>& pids);

}  // namespace velko::SelfCheck
