#pragma once

#include <optional>
#include <string>

#include "VelkoCore/NonCopyable.h"

namespace velko {

/// The framework that brings newer versions, when the bundle has it. Main thread.
class Updater : private NonCopyable {
 public:
    /// Why, when the bundle came without it.
    static constexpr auto missing = "This copy of Velko came without the updater.";

    virtual ~Updater() = default;

    /// Why there are no updates, in words for the user; nothing when there may be. Starts nothing.
    [[nodiscard]] virtual std::optional<std::string> whyUnavailable() const = 0;

    /// Looks for a newer version and tells the user what it found. Whether it could be started.
    [[nodiscard]] virtual bool checkForUpdates() = 0;
};

}  // namespace velko
