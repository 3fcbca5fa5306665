#include <string>
#include <utility>

#include "Velko/App/Refusal.h"
#include "Velko/Setup/Intro.h"
#include "Velko/Setup/SetupFrame.h"
#include "Velko/Setup/SetupSteps.h"
#include "Velko/View/Build.h"

namespace velko::SetupSteps {

using namespace SetupFrame;

namespace {

std::string icons(std::size_t count) {
    return count == 1 ? "1 icon is " : std::to_string(count) + " icons are ";
}

std::string those(std::size_t count) {
    return count == 1 ? "it" : "them";
}

std::string whereTheyAre(const TidyOutcome& outcome) {
    if (outcome.isRefused) {
        return refusalInWords;
    }
    if (outcome.tucked > 0) {
        return icons(outcome.tucked) + "behind the broom. Click it to see " + those(outcome.tucked) + ".";
    }
    if (outcome.buried > 0) {
        return icons(outcome.buried) + "buried. Option-click the broom to see " + those(outcome.buried) + ".";
    }
    return outcome.isAllKept ? "Every icon stays in the bar." : "Right now every icon shows.";
}

std::string whatElse(const TidyOutcome& outcome) {
    if (outcome.tucked == 0 || outcome.buried == 0) {
        return "You can change any of it later, in the settings.";
    }
    return outcome.buried == 1
               ? "Option-click it to see the buried one too."
               : "Option-click it to see the " + std::to_string(outcome.buried) + " buried ones too.";
}

}  // namespace

view::Node done(const TidyOutcome& outcome, const SetupActions& actions) {
    const bool isTidy = !outcome.isRefused && (outcome.isAllKept || outcome.tucked + outcome.buried > 0);
    Foot foot{.right = {primaryButton("done:close", "Done", actions.close)}};
    if (outcome.isRefused) {
        foot.left.push_back(view::button("done:again", {.title = "Try Again", .press = actions.tryAgain}));
    }
    return step("setup:done",
                {{.id = "done:broom", .content = view::Picture{.drawing = Intro::still()}},
                 centred("done:title", isTidy ? "Your menu bar is tidy" : "Your icons are sorted",
                         view::Text::Style::largeTitle),
                 centred("done:where", whereTheyAre(outcome)),
                 centred("done:else", whatElse(outcome), view::Text::Style::caption)},
                std::move(foot));
}

}  // namespace velko::SetupSteps
