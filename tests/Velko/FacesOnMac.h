#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Velko/Broom/BroomFrame.h"
#include "Velko/Broom/HoverWatcher.h"
#include "Velko/Message/MessageController.h"
#include "Velko/Note/NoteController.h"
#include "Velko/Ports/Desktop.h"
#include "Velko/Shelf/ShelfController.h"
#include "VelkoEngine/Ports/Platform.h"
#include "tests/Velko/TreeAudit.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {

/// Velko on a simulated Mac with what opens below its broom. No icon is tucked because time has passed.
class FacesOnMac : public VelkoOnMac {
 protected:
    explicit FacesOnMac(const SimulatedMacOptions& options) : VelkoOnMac(options) {
        layout.reveal.autoTuckSeconds = 0;
        layout.hasCompletedSetup = true;
    }

    void startFaces() {
        start();
        broom = std::make_unique<BroomFrame>(faceParts());
        shelf = std::make_unique<ShelfController>(faceParts(), *broom);
        hover = std::make_unique<HoverWatcher>(faceParts(), *broom);
        note = std::make_unique<NoteController>(faceParts(), *broom);
        message = std::make_unique<MessageController>(faceParts(), *broom);
        changes = velko->observe([this] {
            hover->sync();
            shelf->sync();
            message->sync();
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
    std::unique_ptr<MessageController> message;
    Subscription changes;
};

}  // namespace velko
