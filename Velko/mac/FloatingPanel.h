#pragma once

#import <AppKit/AppKit.h>

#include <functional>
#include <optional>

#include "Velko/Ports/Panels.h"
#include "Velko/Ports/Surfaces.h"
#import "Velko/mac/MacSurfaces.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Task.h"

@class VLKSurfacePanel;

namespace velko {

/// Moves a panel when it comes or goes: it slides out from under the menu bar on a spring and back, or fades.
/// The movement stops when this is destroyed.
class PanelMotion final {
 public:
    /// Begins at once; the panel need not be on screen yet. `mainThread` outlives this.
    PanelMotion(MainThread& mainThread, const Surface::Motion& motion, NSWindow* panel, NSRect target);

    /// The movement goes to another rest from now on.
    void setTarget(NSRect target);

    /// The panel goes the way that it came, from where it is. It does not swing. `gone` is called at the end.
    void leave(std::function<void()> gone);

    /// Whether there is a movement at all: people may want none.
    [[nodiscard]] bool moves() const { return slides() || fade_ > Timing::Seconds::zero(); }

 private:
    [[nodiscard]] bool slides() const { return spring_.duration() > Timing::Seconds::zero(); }
    void step();
    void draw(Timing::Seconds time);

    MainThread& mainThread_;
    SpringCurve spring_;
    Timing::Seconds fade_;
    NSWindow* panel_;
    NSRect target_;
    MainThread::Uptime start_;
    std::function<void()> gone_;  ///< set while it leaves
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
    void takeAway();

    const Surfaces::Traits& traits_;
    VLKSurfacePanel* panel_ = nil;
    NSView* content_ = nil;
    std::optional<Place> place_;
    std::optional<PanelMotion> motion_;
    VLKSurfacePanel* leaving_ = nil;  ///< closed, and still to be seen
};

}  // namespace velko
