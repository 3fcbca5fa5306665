#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Velko/App/AppController.h"
#include "Velko/App/FaceParts.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Ports/Desktop.h"
#include "Velko/Settings/EarlierLayoutsWindow.h"
#include "Velko/Settings/SettingsPages.h"
#include "Velko/View/Node.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Layout/Switches.h"
#include "VelkoCore/Time/Timing.h"

namespace velko::SettingsPages {

namespace {

constexpr std::int64_t usualWideDisplay = 2560;  ///< points; what the switch begins with

view::Node toggle(std::string id, std::string title, bool isOn, std::function<void(bool)> change) {
    return {.id = std::move(id),
            .content = view::Toggle{.title = std::move(title), .isOn = isOn, .change = std::move(change)}};
}

view::Node group(std::string id, std::string title, std::vector<view::Node> children) {
    return {.id = std::move(id),
            .content = view::Group{.title = std::move(title), .children = std::move(children)}};
}

/// The control of one of the layout's switches.
view::Node toggle(AppController& controller, Switch which, std::string title) {
    return managed(toggle(std::string(Switches::row(which).name), std::move(title),
                          Switches::isOn(controller.values().layout, which),
                          [&controller, which](bool on) { controller.preferences().setSwitch(which, on); }),
                   controller.values().managed.sets(which));
}

template <class Change>
void editReveal(AppController& controller, const Change& change) {
    RevealSettings reveal = controller.values().layout.reveal;
    change(reveal);
    controller.preferences().setReveal(reveal);
}

/// Switches off the controls of what is in the layout's file. While that can't be read, a change would
/// replace it.
void lock(view::Node& node) {
    node.isEnabled = false;
    if (auto* const group = std::get_if<view::Group>(&node.content)) {
        std::ranges::for_each(group->children, lock);
    } else if (auto* const stack = std::get_if<view::Stack>(&node.content)) {
        std::ranges::for_each(stack->children, lock);
    }
}

// Revealing

view::Node tuckTime(AppController& controller) {
    view::Node picker = numberPicker(
        {.id = "auto-tuck",
         .title = "Tuck icons back in",
         .offered = {0, 3, 4, 5, 6, 8, 10, 15, 20, 30},
         .now = controller.values().layout.reveal.autoTuckSeconds,
         .inWords =
             [](std::int64_t seconds) {
                 return seconds == 0 ? "Never" : "After " + std::to_string(seconds) + " seconds";
             },
         .choose =
             [&controller](std::int64_t seconds) {
                 editReveal(controller, [&](RevealSettings& reveal) { reveal.autoTuckSeconds = seconds; });
             }});
    return managed(std::move(picker), controller.values().managed.autoTuckSeconds.has_value());
}

view::Node stylePicker(AppController& controller, std::string id, std::string title,
                       RevealStyle RevealSettings::* style,
                       std::optional<RevealStyle> ManagedLayout::* managedStyle) {
    constexpr std::array styles{RevealStyle::inline_, RevealStyle::shelf};
    view::Node picker{.id = std::move(id),
                      .content = view::Picker{
                          .title = std::move(title),
                          .options = {"In the menu bar", "On the shelf"},
                          .selected = static_cast<std::size_t>(controller.values().layout.reveal.*style),
                          .style = view::Picker::Style::segmented,
                          .choose = [&controller, style, styles](std::size_t index) {
                              editReveal(controller,
                                         [&](RevealSettings& reveal) { reveal.*style = styles.at(index); });
                          }}};
    return managed(std::move(picker), (controller.values().managed.*managedStyle).has_value());
}

view::Node everything(AppController& controller) {
    const bool isAllOut = controller.engine().current().isShowAll();
    view::Node button =
        view::button("show-all", {.title = "Show All", .press = [&controller] { controller.showAll(); }});
    const bool isPresenting = controller.values().isPresenting();
    button.isEnabled = !isAllOut && !isPresenting;
    button.help = isAllOut       ? "Everything is out already."
                  : isPresenting ? "Hidden icons stay hidden while you are presenting."
                                 : "";
    return explained(
        view::row("show-all:row", {view::text("show-all:title", "All icons, the buried ones too"),
                                   view::spacer("show-all:gap"), std::move(button)}),
        "They are out until you click the broom, or until something changes.");
}

/// "2,560"
std::string grouped(std::int64_t number) {
    std::string digits = std::to_string(number);
    for (auto place = static_cast<std::ptrdiff_t>(digits.size()) - 3; place > 0; place -= 3) {
        digits.insert(static_cast<std::size_t>(place), ",");
    }
    return digits;
}

/// Which width of a display counts as wide, among those that are common.
view::Node widthPicker(AppController& controller) {
    const auto chosen = controller.values().layout.showAllFromWidth;
    view::Node picker = numberPicker(
        {.id = "wide-from",
         .title = "Wide is a display of",
         .offered = {1600, 1920, 2560, 3008, 3440, 3840},
         .now = chosen.value_or(usualWideDisplay),
         .inWords = [](std::int64_t width) { return grouped(width) + " points or more"; },
         .choose =
             [&controller](std::int64_t width) { controller.preferences().setShowAllFromWidth(width); }});
    picker.isEnabled = chosen.has_value();
    return picker;
}

/// The widths of the displays that are there, so that the user knows which of them counts as wide.
std::string displaysInWords(const Displays& displays) {
    std::string widths;
    for (const Display& display : displays.displays()) {
        widths += (widths.empty() ? "" : ", ") + grouped(std::lround(display.frame.width));
    }
    return widths.empty() ? "" : " Here: " + widths + " points.";
}

std::vector<view::Node> wideDisplays(const FaceParts& parts) {
    AppController& controller = parts.controller;
    return {explained(toggle("wide-displays", "Show everything on wide displays",
                             controller.values().layout.showAllFromWidth.has_value(),
                             [&controller](bool on) {
                                 controller.preferences().setShowAllFromWidth(
                                     on ? std::optional(usualWideDisplay) : std::nullopt);
                             }),
                      "While the broom is on such a display, nothing is hidden." +
                          displaysInWords(parts.platform.displays)),
            widthPicker(controller)};
}

view::Node revealing(const FaceParts& parts) {
    AppController& controller = parts.controller;
    std::vector<view::Node> wide = wideDisplays(parts);
    return group(
        "revealing", "When icons come out",
        {stylePicker(controller, "style-notched", "On displays with a notch", &RevealSettings::notchedStyle,
                     &ManagedLayout::notchedStyle),
         stylePicker(controller, "style-other", "On other displays", &RevealSettings::otherStyle,
                     &ManagedLayout::otherStyle),
         tuckTime(controller),
         toggle(controller, Switch::revealOnHover, "Show tucked icons when the pointer rests on the broom"),
         everything(controller),
         explained(toggle(controller, Switch::shelfWhenFull, "Use the shelf when the bar has no room"),
                   "Icons that don't fit beside the notch or the menus would vanish."),
         std::move(wide.front()), std::move(wide.back())});
}

// What Velko does by itself

view::Node byItself(AppController& controller) {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(Timing::popOutDuration).count();
    return group(
        "by-itself", "What Velko does by itself",
        {explained(toggle(controller, Switch::popOutOnChange, "Let a tucked icon pop out when it changes"),
                   "It shows in the bar for " + std::to_string(seconds) + " seconds, then tucks back in."),
         explained(toggle(controller, Switch::showLiveActivities, "Make room for Live Activities"),
                   "While your iPhone has a Live Activity running, everything is out."),
         explained(toggle(controller, Switch::autopilot, "Autopilot"),
                   "Once a week it suggests what to tuck, bury, bring back or quit. You decide.")});
}

// Layouts of earlier days

/// Not locked while the layout can't be read: that is when they are needed most.
view::Node earlierLayouts(EarlierLayoutsWindow& window) {
    return group(
        "earlier", "Your layout",
        {view::row("earlier:row",
                   {view::text("earlier:title", "As it was before an import, a sort or a day's changes"),
                    view::spacer("earlier:gap"),
                    view::button("earlier-layouts",
                                 {.title = "Earlier Layouts…", .press = [&window] { window.show(); }})})});
}

}  // namespace

view::Node numberPicker(NumberChoice choice) {
    std::vector<std::int64_t> numbers = std::move(choice.offered);
    const auto place = std::ranges::lower_bound(numbers, choice.now);
    const auto selected = static_cast<std::size_t>(place - numbers.begin());
    if (place == numbers.end() || *place != choice.now) {
        numbers.insert(place, choice.now);
    }
    std::vector<std::string> options(numbers.size());
    std::ranges::transform(numbers, options.begin(), choice.inWords);
    return {.id = std::move(choice.id),
            .content = view::Picker{.title = std::move(choice.title),
                                    .options = std::move(options),
                                    .selected = selected,
                                    .choose = [choose = std::move(choice.choose),
                                               numbers](std::size_t index) { choose(numbers.at(index)); }}};
}

view::Node loginSwitch(const FaceParts& parts) {
    using Status = LoginItem::Status;
    AppController& controller = parts.controller;
    const Status status = parts.ports.loginItem.status();
    view::Node control = toggle("launch-at-login", "Open Velko when you log in",
                                status == Status::enabled || status == Status::requiresApproval,
                                [&controller](bool on) { controller.preferences().setLaunchAtLogin(on); });
    std::string what;
    if (const auto& failure = controller.values().loginFailure) {
        what = "That didn't work: " + *failure;
    } else if (status == Status::requiresApproval) {
        what = "Waiting for your approval, in System Settings under Login Items.";
    }
    return explained(std::move(control), std::move(what));
}

view::Node general(const Context& context) {
    const FaceParts& parts = context.parts;
    AppController& controller = parts.controller;
    std::vector<view::Node> children{group("starting", "Starting", {loginSwitch(parts)})};
    std::vector<view::Node> kept{revealing(parts), byItself(controller)};
    if (controller.values().problems.layoutUnreadable) {
        children.push_back(view::text("general:locked",
                                      "The rest is written in your layout file. Until it can be read, there "
                                      "is nothing to change here."));
        std::ranges::for_each(kept, lock);
    }
    std::ranges::move(kept, std::back_inserter(children));
    children.push_back(earlierLayouts(context.earlier));
    return scrolling("scroll", "General", view::column("page:general", std::move(children), 14));
}

}  // namespace velko::SettingsPages
