#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "Velko/App/AppController.h"
#include "Velko/App/Health.h"
#include "Velko/Apps/MenuBarApps.h"
#include "Velko/Broom/BroomIcon.h"
#include "Velko/Setup/Intro.h"
#include "Velko/Setup/SetupFrame.h"
#include "Velko/Setup/SetupSteps.h"
#include "Velko/View/Node.h"

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

std::string title(const TidyOutcome& outcome) {
    const bool isTidy = !outcome.isRefused && (outcome.isAllKept || outcome.tucked + outcome.buried > 0);
    return isTidy ? "Your menu bar is tidy" : "Your icons are sorted";
}

/// Where the rest is, with the broom as the menu bar shows it.
view::Node menuHint() {
    return view::row(
        "done:menu",
        {{.id = "done:icon", .content = view::Picture{.drawing = BroomDrawing::icon({})}},
         view::text("done:hint", "Up in your menu bar: right-click the broom for the settings and more.")});
}

}  // namespace

std::string spokenDone(const TidyOutcome& outcome) {
    return title(outcome) + ". " + whereTheyAre(outcome);
}

view::Node done(const TidyOutcome& outcome, DoneFacts facts, const SetupActions& actions) {
    std::vector<view::Node> content{{.id = "done:broom", .content = view::Picture{.drawing = Intro::still()}},
                                    centred("done:title", title(outcome), view::Text::Style::largeTitle),
                                    centred("done:where", whereTheyAre(outcome)),
                                    centred("done:else", whatElse(outcome), view::Text::Style::caption),
                                    menuHint()};
    if (facts.saveFailure) {
        content.push_back(
            notice("done:save", "That couldn't be saved: " + *facts.saveFailure,
                   {view::button("done:save:again", {.title = "Save Again", .press = actions.saveAgain})}));
    }
    content.push_back(std::move(facts.loginSwitch));
    Foot foot{.right = {primaryButton("done:close", "Done", actions.close)}};
    if (outcome.isRefused) {
        foot.left.push_back(view::button("done:again", {.title = "Try Again", .press = actions.tryAgain}));
    }
    return step("setup:done", std::move(content), std::move(foot));
}

}  // namespace velko::SetupSteps

namespace velko {

TidyOutcome TidyOutcome::of(const AppController& controller) {
    const AppValues& values = controller.values();
    TidyOutcome outcome{.isAllKept = hiddenApps(controller).areNone(),
                        .isRefused = values.isRefused && values.health().isOk()};
    for (const MenuBarItem& item : values.items) {
        if (controller.engine().current().hides(item.bundleID)) {
            const bool isBuried = values.layout.section(item.bundleID) == Section::buried;
            ++(isBuried ? outcome.buried : outcome.tucked);
        }
    }
    return outcome;
}

}  // namespace velko
