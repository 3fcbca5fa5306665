#pragma once

#import <AppKit/AppKit.h>

#include "Velko/Ports/Surfaces.h"
#include "Velko/View/SpringCurve.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// How a panel comes: out from under the menu bar on a spring, or fading in. It stops when this is destroyed.
class PanelMotion final {
 public:
    /// Begins at once; the panel need not be on screen yet. `mainThread` outlives this.
    PanelMotion(MainThread& mainThread, const Surface::Motion& motion, NSWindow* panel, NSRect target);

    /// Where the panel comes to rest; from now on there.
    void setTarget(NSRect target);

 private:
    void step();
    void draw(double seconds);

    MainThread& mainThread_;
    SpringCurve spring_;
    double fade_;
    NSWindow* panel_;
    NSRect target_;
    MainThread::Uptime start_;
    Task steps_;
};

}  // namespace velko
