#pragma once

#include <functional>
#include <optional>

#include "Velko/App/FaceParts.h"
#include "Velko/Ports/Surfaces.h"
#include "VelkoCore/Geometry.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// A small panel that goes along with the system's settings window and points at the list in which the user
/// gives the permission. It says thank you when that has happened, and goes. Main thread.
class PermissionGuide final : private NonCopyable {
 public:
    explicit PermissionGuide(const FaceParts& parts);
    ~PermissionGuide() { stop(); }

    /// Shows from now on wherever the settings window is, until the permission is there. Nothing happens
    /// while it is.
    void start();
    void stop();

    /// The permission is there, and the thanks have been read.
    std::function<void()> onDone;

 private:
    void follow();
    void show(const Surface::Place& place);
    void thank();
    [[nodiscard]] std::optional<Rect> settingsWindow() const;
    [[nodiscard]] Surface::Place placeFor(const Rect& window) const;

    FaceParts parts_;
    Surface& panel_;
    Surface::Place place_;
    Task beat_;
};

}  // namespace velko
