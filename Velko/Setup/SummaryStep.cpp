#include <string>
#include <vector>

#include "Velko/Setup/SectionCounts.h"
#include "Velko/Setup/SetupFrame.h"
#include "Velko/Setup/SetupSteps.h"
#include "Velko/View/Build.h"

namespace velko::SetupSteps {

using namespace SetupFrame;

namespace {

std::string counted(const SortSession& session) {
    return describe(SectionCounts{.bar = session.count(Section::bar),
                                  .tucked = session.count(Section::tucked),
                                  .buried = session.count(Section::buried)}) +
           ".";
}

}  // namespace

view::Node summary(const SortSession& session, const SetupFlow& flow, const std::string& whyEmpty,
                   const SetupActions& actions) {
    const bool isEmpty = session.cards().empty();
    std::vector<view::Node> content{
        centred("summary:title", isEmpty ? "Nothing to sort" : "All sorted", view::Text::Style::title),
        centred("summary:counts", isEmpty ? whyEmpty : counted(session))};
    if (const auto& imported = flow.imported(); imported && flow.takesTiming()) {
        content.push_back(
            centred("summary:timing", "With " + imported->source + "'s timing.", view::Text::Style::caption));
    }
    content.push_back(centred("summary:later", "You can change any of it later, in the settings.",
                              view::Text::Style::caption));
    view::Node startOver =
        view::button("summary:over",
                     {.title = "Start Over", .style = view::Button::Style::link, .press = actions.startOver});
    startOver.isEnabled = !isEmpty;
    content.push_back(
        buttons("summary:buttons",
                {backButton(flow.canGoBack(), actions.back), startOver, view::spacer("summary:gap"),
                 primaryButton("summary:apply", "Apply to Menu Bar", actions.apply)}));
    return step("setup:summary", content);
}

}  // namespace velko::SetupSteps
