#include "Velko/Setup/SetupFrame.h"
#include "Velko/Setup/SetupSteps.h"
#include "Velko/View/Build.h"

namespace velko::SetupSteps {

using namespace SetupFrame;

view::Node permission(bool isTrusted, const SetupActions& actions) {
    const view::Node state =
        isTrusted ? centred("permission:state", "Done. Thank you!", view::Text::Style::headline)
                  : centred("permission:state", "Velko waits here and notices by itself.",
                            view::Text::Style::caption);
    const view::Node next = isTrusted
                                ? primaryButton("permission:go", "Continue", actions.goOn)
                                : primaryButton("permission:open", "Open Device Control and Data Access…",
                                                actions.openPermission);
    return step(
        "setup:permission",
        {centred("permission:title", "One permission, please", view::Text::Style::title),
         centred("permission:why",
                 "To see whose icons are in your menu bar, and which of them you click, Velko needs the "
                 "Accessibility permission. In the list that opens, switch Velko on."),
         centred("permission:promise", "It never sees what you type, and what it learns stays on this Mac.",
                 view::Text::Style::caption),
         state,
         buttons("permission:buttons",
                 {backButton(true, actions.back), view::spacer("permission:gap"), next})});
}

}  // namespace velko::SetupSteps
