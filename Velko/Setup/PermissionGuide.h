#pragma once

#include <functional>
#include <optional>

#include "Velko/App/FaceParts.h"
#include "Velko/Ports/Surfaces.h"
#include "VelkoCore/Geometry.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// A small panel that follows the system's settings window, and points at the list where the user gives the
/// permission. When the user has given it, the panel says thank you and closes. Main thread.
class PermissionGuide final : private NonCopyable {
 public:
    /// Calls `done` when the permission is there and the user has had time to read the thanks.
    PermissionGuide(const FaceParts& parts, std::function<void()> done);

    /// From now on the panel shows wherever the settings window is, until the permission is there. Nothing
    /// happens if it is there already.
    void start();
    void stop();

 private:
    void follow();
    void show(const Surface::Place& place);
    void thank();
    [[nodiscard]] std::optional<Rect> settingsWindow() const;
    [[nodiscard]] Surface::Place placeFor(const Rect& window) const;

    FaceParts parts_;
    std::function<void()> done_;
    OpenSurface panel_;
    Task beat_;
};

}  // namespace velko
