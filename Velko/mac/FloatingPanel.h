#pragma once

#import <AppKit/AppKit.h>

#include <optional>

#include "Velko/Ports/Panels.h"
#include "Velko/Ports/Surfaces.h"
#import "Velko/mac/MacSurfaces.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Task.h"

@class VLKSurfacePanel;

namespace velko {

/// Moves a panel when it comes: it slides out from under the menu bar on a spring, or fades in. The movement
/// stops when this is destroyed.
class PanelMotion final {
 public:
    /// Begins at once; the panel need not be on screen yet. `mainThread` outlives this.
    PanelMotion(MainThread& mainThread, const Surface::Motion& motion, NSWindow* panel, NSRect target);

    /// The movement goes to another rest from now on.
    void setTarget(NSRect target);

 private:
    void step();
    void draw(Timing::Seconds time);

    MainThread& mainThread_;
    SpringCurve spring_;
    Timing::Seconds fade_;
    NSWindow* panel_;
    NSRect target_;
    MainThread::Uptime start_;
    Task steps_;
};

/// A panel without a title bar. It floats above other windows on every desktop, and does not bring Velko to
/// the front.
class FloatingPanel final : public MacSurface {
 public:
    /// All outlive this.
    FloatingPanel(MainThread& mainThread, AppIcons& icons, const Surfaces::Traits& traits)
        : MacSurface(mainThread, icons), traits_(traits) {}

    void move(const Place& place) override;

 private:
    [[nodiscard]] bool present(const Opening& opening, VLKTreeView* tree) override;
    void resize(NSSize size) override;
    void dismantle() override;
    [[nodiscard]] NSWindow* window() const override;
    [[nodiscard]] bool goesOnEscape() const override { return isTransient(); }

    [[nodiscard]] bool isTransient() const noexcept { return traits_.isTransient(); }
    [[nodiscard]] bool hasArrow() const noexcept { return traits_.form == Surfaces::Form::panelWithArrow; }
    [[nodiscard]] NSRect target() const;
    void moveToTarget();
    void pointArrow(NSRect frame);

    const Surfaces::Traits& traits_;
    VLKSurfacePanel* panel_ = nil;
    NSView* content_ = nil;
    std::optional<Place> place_;
    std::optional<PanelMotion> motion_;
};

}  // namespace velko
