#include <string>
#include <utility>
#include <vector>

#include "Velko/Setup/SectionCounts.h"
#include "Velko/Setup/SetupFrame.h"
#include "Velko/Setup/SetupSteps.h"
#include "Velko/View/Build.h"

namespace velko::SetupSteps {

using namespace SetupFrame;

namespace {

std::string places(const ImportedLayout& imported) {
    if (imported.sections.empty()) {
        return "The places of your icons can't be taken over: " + imported.source +
               " keeps none that Velko can read. You sort them yourself, card by card.";
    }
    SectionCounts counts;
    for (const auto& [bundleID, section] : imported.sections) {
        counts.add(section);
    }
    return "The places of " + appsInWords(imported.sections.size()) +
           " can be taken over: " + describe(counts) + ". They stand as suggestions on your cards.";
}

std::string tuckTime(const ImportedLayout& imported, const RevealSettings& mine) {
    if (!imported.autoTuckSeconds) {
        return "How long icons stay out can't be taken over: " + imported.source +
               (mine.autoTuckSeconds == 0
                    ? " doesn't say. With Velko they stay until you tuck them."
                    : " doesn't say. With Velko it is " + std::to_string(mine.autoTuckSeconds) + " seconds.");
    }
    return *imported.autoTuckSeconds == 0
               ? "How long icons stay out can be taken over: until you tuck them."
               : "How long icons stay out can be taken over: " + std::to_string(*imported.autoTuckSeconds) +
                     " seconds.";
}

std::string hover(const ImportedLayout& imported) {
    if (!imported.hover) {
        return "Whether icons come out under the pointer can't be taken over: " + imported.source +
               " doesn't say.";
    }
    return *imported.hover ? "Showing icons when the pointer rests on the broom can be taken over: on."
                           : "Showing icons when the pointer rests on the broom can be taken over: off.";
}

}  // namespace

view::Node found(const ImportedLayout& imported, const RevealSettings& mine, const SetupActions& actions) {
    std::vector<view::Node> foot{backButton(true, actions.back), view::spacer("found:gap")};
    const auto decide = [&actions](bool take) {
        return [decide = actions.decideTiming, take] { decide(take); };
    };
    if (imported.autoTuckSeconds || imported.hover) {
        foot.push_back(
            view::button("found:keep", {.title = "Keep Velko's Timing",
                                        .shortcut = {.key = view::Shortcut::Key::character, .character = 'k'},
                                        .press = decide(false)}));
        foot.push_back(primaryButton("found:take", "Use " + imported.source + "'s Timing", decide(true)));
    } else {
        foot.push_back(primaryButton("found:go", "Continue", decide(false)));
    }
    return step(
        "setup:found",
        {centred("found:title", "You come from " + imported.source, view::Text::Style::title),
         view::column("found:what", {view::text("found:places", places(imported)),
                                     view::text("found:time", tuckTime(imported, mine)),
                                     view::text("found:hover", hover(imported)),
                                     view::text("found:rest",
                                                "Everything else stays behind, such as "
                                                "hot keys and colours. Velko hides whole "
                                                "apps, not single icons.")}),
         centred("found:quit",
                 "Quit " + imported.source + " before you apply: two organisers get in each other's way.",
                 view::Text::Style::caption),
         buttons("found:buttons", std::move(foot))});
}

}  // namespace velko::SetupSteps
