#pragma once

#include <expected>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "VelkoCore/NonCopyable.h"

// The small ports to the desktop that Velko runs on. Main thread, each of them.

namespace velko {

/// This program as the desktop sees it. Main thread.
class Application : private NonCopyable {
 public:
    enum class Policy {
        accessory,  ///< neither in the Dock nor in the application switcher
        regular,    ///< in both
    };

    virtual ~Application() = default;

    [[nodiscard]] virtual Policy policy() const = 0;
    virtual void setPolicy(Policy policy) = 0;

    /// Puts the program's icon, 512 points wide, into the Dock.
    virtual void showDockIcon() = 0;

    /// Brings the program's windows in front of other programs'.
    virtual void activate() = 0;

    /// Ends the program in the orderly way.
    virtual void terminate() = 0;

    /// Opens a file with an application. Without one it does what a double click does: it opens the file
    /// with the application that the system has for it. An application that is opened this way comes to the
    /// front, and hears that it was opened again.
    virtual void openFile(const std::filesystem::path& file,
                          const std::optional<std::filesystem::path>& application) = 0;

    /// Whether the system did something; if not, its words.
    using Outcome = std::expected<void, std::string>;

    /// Puts a file or a folder into the user's Trash.
    [[nodiscard]] virtual Outcome moveToTrash(const std::filesystem::path& file) = 0;

    /// Copies a file or a folder with everything in it. Nothing may be at its new place yet.
    [[nodiscard]] virtual Outcome copy(const std::filesystem::path& from,
                                       const std::filesystem::path& to) = 0;

    /// Opens a program, also one that runs already from elsewhere. `done` is told what came of it, perhaps
    /// within this call.
    virtual void openAnother(const std::filesystem::path& program,
                             std::function<void(const Outcome&)> done) = 0;
};

/// Whether the system opens this program when the user logs in. Main thread.
class LoginItem : private NonCopyable {
 public:
    enum class Status { notRegistered, enabled, requiresApproval, notFound };

    virtual ~LoginItem() = default;

    /// Asks the system at every call: the user may change it in the system's settings.
    [[nodiscard]] virtual Status status() const = 0;

    /// Puts this program on the system's list, or takes it off. When the system refuses: its words.
    [[nodiscard]] virtual std::expected<void, std::string> setEnabled(bool enabled) = 0;
};

/// The status as the log says it: "requires approval".
[[nodiscard]] constexpr std::string_view describe(LoginItem::Status status) noexcept {
    switch (status) {
        case LoginItem::Status::notRegistered: return "not registered";
        case LoginItem::Status::enabled: return "enabled";
        case LoginItem::Status::requiresApproval: return "requires approval";
        case LoginItem::Status::notFound: break;
    }
    return "not found";
}

/// The user's defaults for this program. Main thread.
class Defaults : private NonCopyable {
 public:
    virtual ~Defaults() = default;

    /// Whether a switch is on; one that was never set is off.
    [[nodiscard]] virtual bool isOn(const std::string& key) const = 0;
    virtual void setOn(const std::string& key, bool on) = 0;

    /// A text; one that was never set is empty.
    [[nodiscard]] virtual std::string text(const std::string& key) const = 0;
    virtual void setText(const std::string& key, const std::string& text) = 0;
};

/// What the user has copied. Main thread.
class Pasteboard : private NonCopyable {
 public:
    virtual ~Pasteboard() = default;

    /// Replaces it with a text.
    virtual void setText(const std::string& text) = 0;
};

/// The framework that installs newer versions of Velko. A bundle may lack it. Main thread.
class Updater : private NonCopyable {
 public:
    /// What to tell the user when the bundle lacks it.
    static constexpr auto missing = "This copy of Velko came without the updater.";

    virtual ~Updater() = default;

    /// Why the user can't look for updates, in words for them; nothing when they can. Starts nothing.
    [[nodiscard]] virtual std::optional<std::string> whyUnavailable() const = 0;

    /// Looks for a newer version and tells the user what it found. Returns whether it could start.
    [[nodiscard]] virtual bool checkForUpdates() = 0;
};

class CommandDoor;
class Dialogs;
class HotKeys;
class StatusItem;
class Surfaces;

/// What the app needs of the machine besides the engine's `Platform`: one reference for each port. They
/// outlive everything.
struct AppPorts {
    Application& application;
    CommandDoor& commands;
    Defaults& defaults;
    Dialogs& dialogs;
    HotKeys& hotKeys;
    LoginItem& loginItem;
    Pasteboard& pasteboard;
    StatusItem& statusItem;
    Surfaces& surfaces;
    Updater& updater;
};

}  // namespace velko
