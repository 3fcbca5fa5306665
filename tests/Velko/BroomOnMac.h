#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "Velko/Broom/BroomFrame.h"
#include "Velko/Broom/StatusItemController.h"
#include "Velko/Note/NoteController.h"
#include "Velko/Ports/Desktop.h"
#include "VelkoEngine/Ports/Platform.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {

/// Velko on a simulated Mac with its broom in the menu bar, where a test clicks on it.
class BroomOnMac : public VelkoOnMac {
 protected:
    BroomOnMac() {
        layout.reveal.autoTuckSeconds = 0;
        layout.hasCompletedSetup = true;
    }

    /// `fileAsItIs`: starts with the layout file that is there, and not with `layout`.
    void startBroom(bool fileAsItIs = false) {
        fileAsItIs ? startWithFileAsItIs() : start();
        frame.emplace(faceParts());
        broom.emplace(faceParts(), *frame);
        host.showNote = [this] { broom->note().show(); };
        changes = velko->observe([this] { broom->update(); });
        broom->start();
        pass(std::chrono::seconds(1));
    }

    void click(SimulatedClick click = {}) {
        mac.statusItem.click(click);
        pass(std::chrono::milliseconds(100));
    }
    bool choose(const std::string& title) {
        click({.isRight = true});
        return mac.statusItem.chooseFromMenu(title);
    }
    bool chooseDebug(const std::string& title) {
        click({.isRight = true, .option = true});
        return mac.statusItem.chooseFromMenu(title);
    }

    /// A menu as a person reads it: brackets around what can't be chosen, a colon after headers.
    static std::vector<std::string> read(const view::Menu& menu, const std::string& indent = "") {
        std::vector<std::string> lines;
        for (const view::MenuItem& item : menu) {
            const bool isHeader = item.kind == view::MenuItem::Kind::header;
            const bool isSeparator = item.kind == view::MenuItem::Kind::separator;
            std::string line = item.symbol + (item.symbol.empty() ? "" : " ") + item.title;
            if (isHeader || isSeparator) {
                line += isHeader ? ":" : "--";
            } else if (!item.isEnabled) {
                line.insert(0, "(").append(")");
            }
            lines.push_back(line.insert(0, indent));
            std::ranges::copy(read(item.submenu, indent + "  "), std::back_inserter(lines));
        }
        return lines;
    }
    [[nodiscard]] std::vector<std::string> openMenu(SimulatedClick opening = {.isRight = true}) {
        click(opening);
        return mac.statusItem.menu() == nullptr ? std::vector<std::string>{} : read(*mac.statusItem.menu());
    }

    [[nodiscard]] SimulatedSurface& note() { return mac.surfaces.surface(Surfaces::Kind::note); }

    std::optional<BroomFrame> frame;
    std::optional<StatusItemController> broom;
    Subscription changes;
};

}  // namespace velko
