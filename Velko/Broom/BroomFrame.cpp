#include "Velko/Broom/BroomFrame.h"

#include "Velko/AppController.h"
#include "VelkoEngine/Inventory.h"
#include "VelkoEngine/Ports/Displays.h"

namespace velko {

BroomFrame::BroomFrame(const FaceParts& parts)
    : platform_(parts.platform),
      notices_(platform_.mainThread),
      values_(parts.controller.observe([this] { refresh(); })),
      displays_(platform_.displays.observeChanges([this] { refresh(); })) {}

void BroomFrame::refresh() {
    const std::optional<Rect> frame = Inventory::ownItemFrame(platform_);
    // No answer says nothing about the icon, which stays in the bar as long as Velko runs.
    if (frame && frame != chevronFrame_) {
        chevronFrame_ = frame;
        notices_.note();
    }
}

}  // namespace velko
