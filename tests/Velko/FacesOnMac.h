#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Velko/Broom/BroomFrame.h"
#include "Velko/Broom/HoverWatcher.h"
#include "Velko/Note/NoteController.h"
#include "Velko/Ports/AppPorts.h"
#include "Velko/Shelf/ShelfController.h"
#include "VelkoEngine/Ports/Platform.h"
#include "tests/Velko/TreeAudit.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {

/// Velko on a simulated Mac with what opens below its broom. Nothing is tucked by time alone.
class FacesOnMac : public VelkoOnMac {
 protected:
    explicit FacesOnMac(const SimulatedMacOptions& options) : VelkoOnMac(options) {
        layout.reveal.autoTuckSeconds = 0;
        layout.hasCompletedSetup = true;
    }

    void startFaces() {
        start();
        const FaceParts parts{
            .controller = *velko, .platform = mac.platform(), .ports = mac.appPorts(), .log = log};
        broom = std::make_unique<BroomFrame>(parts);
        shelf = std::make_unique<ShelfController>(parts, *broom);
        shelf->onOpen = [this](const BundleID& app) { velko->open(app); };
        shelf->onMove = [this](const BundleID& app, Section section) { velko->place(app, section); };
        shelf->onDismiss = [this](ShelfDismissal by) { velko->closeShelf(by); };
        hover = std::make_unique<HoverWatcher>(parts, *broom);
        note = std::make_unique<NoteController>(parts, *broom);
        changes = velko->observe([this] {
            hover->sync();
            shelf->sync();
        });
        hover->sync();
        broom->refresh();
        pass(std::chrono::seconds(1));
    }

    ProcessID launchNamed(const BundleID& bundleID, const std::string& name) {
        const ProcessID pid = mac.launch({.bundleID = bundleID, .name = name, .icons = {{.title = name}}});
        if (velko) {
            pass(std::chrono::seconds(1));
        }
        return pid;
    }
    void toggle(bool withBuried = false) {
        velko->toggle(withBuried);
        pass(std::chrono::seconds(1));
    }
    [[nodiscard]] bool isRevealed() const { return values().state.isRevealed(); }

    std::unique_ptr<BroomFrame> broom;
    std::unique_ptr<ShelfController> shelf;
    std::unique_ptr<HoverWatcher> hover;
    std::unique_ptr<NoteController> note;
    Subscription changes;
};

}  // namespace velko
