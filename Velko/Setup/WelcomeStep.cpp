#include <utility>

#include "Velko/Setup/SetupFrame.h"
#include "Velko/Setup/SetupSteps.h"

namespace velko::SetupSteps {

using namespace SetupFrame;

view::Node welcome(view::Drawing picture, const SetupActions& actions) {
    return step(
        "setup:welcome",
        {{.id = "welcome:intro", .content = view::Picture{.drawing = std::move(picture)}},
         centred("welcome:title", "Hello, I'm Velko.", view::Text::Style::largeTitle),
         centred("welcome:what",
                 "I sweep the icons that you rarely need behind my broom, so your menu bar stays "
                 "calm. One click on the broom brings them back."),
         centred("welcome:promise", "You decide about every app, and nothing moves before you say so.",
                 view::Text::Style::caption)},
        {.right = {primaryButton("welcome:go", "Let's Tidy", actions.goOn)}});
}

}  // namespace velko::SetupSteps
