#pragma once

#include <optional>
#include <string>

#include "Velko/Ports/Desktop.h"

namespace velko {

/// "Check for Updates…", wherever it stands. Main thread.
class Updates final {
 public:
    explicit Updates(const AppPorts& ports) : ports_(ports) {}

    /// Why the user can't look for updates, in words; nothing when they can.
    [[nodiscard]] std::optional<std::string> whyUnavailable() const;

    /// Comes to the front and has the updater look for a newer version.
    void checkForUpdates();

 private:
    AppPorts ports_;
};

}  // namespace velko
