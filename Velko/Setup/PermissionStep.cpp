#include "Velko/Setup/SetupFrame.h"
#include "Velko/Setup/SetupSteps.h"

namespace velko::SetupSteps {

using namespace SetupFrame;

view::Node permission(bool isTrusted, const SetupActions& actions) {
    const view::Node state =
        isTrusted ? centred("permission:state", "Done. Thank you!", view::Text::Style::headline)
                  : centred("permission:state", "Velko goes on as soon as you have switched it on.",
                            view::Text::Style::caption);
    const view::Node next = isTrusted ? primaryButton("permission:go", "Continue", actions.goOn)
                                      : permissionButton(actions.openPermission);
    return step(
        "setup:permission",
        {headSymbol("permission:symbol", isTrusted ? "checkmark.circle.fill" : "lock.shield"),
         centred("permission:title", "One permission, please", view::Text::Style::title),
         centred("permission:why",
                 "To see whose icons are in your menu bar, and which of them you click, Velko needs the "
                 "Accessibility permission."),
         centred("permission:where",
                 "macOS lists it as “Device Control and Data Access”. Switch Velko on in the list there."),
         centred("permission:promise",
                 "Velko never sees what you type, and what it learns stays on this Mac.",
                 view::Text::Style::caption),
         state},
        {.left = backButton(true, actions.back), .right = {next}});
}

}  // namespace velko::SetupSteps
