#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "VelkoCore/NonCopyable.h"

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

    /// Ends the program, by way of its orderly end.
    virtual void terminate() = 0;

    /// Opens a file with an application, or as a double click does: with the one that the system has for it;
    /// a file that is an application comes to the front, and is told that it was opened again.
    virtual void openFile(const std::filesystem::path& file,
                          const std::optional<std::filesystem::path>& application) = 0;
};

}  // namespace velko
