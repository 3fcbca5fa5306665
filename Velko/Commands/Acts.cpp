#include "Velko/Commands/Acts.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <utility>
#include <vector>

#include "Velko/App/AppController.h"
#include "Velko/App/Log.h"
#include "Velko/Apps/ManagedWords.h"
#include "Velko/Commands/Reports.h"
#include "Velko/Flows/EarlierLayouts.h"
#include "Velko/Flows/LayoutTransfer.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Flows/Presenting.h"
#include "Velko/Flows/ShowApp.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Layout/Switches.h"
#include "VelkoCore/Search/AppSearch.h"
#include "VelkoEngine/Ports/Platform.h"

namespace velko::commands {

namespace {

using Apps = std::vector<PresentApp>;

/// The apps that commands may be about.
Apps appsKnown(const FaceParts& parts, bool others) {
    const AppValues& values = parts.controller.values();
    Apps apps = presentApps(values);
    if (others) {
        const AppNames names(values, parts.platform.workspace);
        for (const auto& [bundleID, section] : values.layout.sections) {
            if (!isPresent(values, bundleID)) {
                apps.push_back({.bundleID = bundleID, .name = names.of(bundleID)});
            }
        }
    }
    std::erase_if(apps, [&](const PresentApp& app) { return !canBePlaced(parts.controller, app.bundleID); });
    return apps;
}

template <class Fits>
Apps those(const Apps& apps, Fits fits) {
    Apps found;
    std::ranges::copy_if(apps, std::back_inserter(found), fits);
    return found;
}

std::string severalFit(const std::string& text, const Apps& apps) {
    std::string words = "“" + text + "” fits more than one app:";
    for (const PresentApp& app : apps) {
        words.append("\n  ").append(app.name).append("  ").append(app.bundleID);
    }
    return words;
}

RevealState stateOf(const FaceParts& parts) {
    return parts.controller.values().state;
}

/// Why icons can be brought out or tucked by nobody now; nothing if they can.
std::optional<std::string> whyStill(const AppValues& values) {
    auto why = whyHelpless(values);
    if (!why && values.isPresenting()) {
        why = "You are presenting, so hidden icons stay hidden. “velko present off” ends that.";
    }
    return why;
}

constexpr auto outAlready = "Everything is out already, because this display is wide.\n";

Reply show(const Call& call, const FaceParts& parts) {
    AppController& velko = parts.controller;
    if (const auto why = whyStill(velko.values())) {
        return refusal(*why);
    }
    velko.showMe().stop();
    if (velko.values().hidesNothing()) {
        return {.out = outAlready};
    }
    if (velko.values().stepsAside()) {
        return {.out = "Everything is out already, because of a Live Activity.\n"};
    }
    const bool buried = call.has("--buried");
    const auto isOut = [&] {
        const RevealState state = stateOf(parts);
        return buried ? state == RevealState::revealedWithBuried() : state.isRevealed();
    };
    if (!isOut() && stateOf(parts).asPeeking() != nullptr) {
        velko.handle(RevealEvent::peekEnded());
    }
    if (!isOut()) {
        velko.handle(buried ? RevealEvent::toggleWithBuried() : RevealEvent::toggle());
    } else {
        velko.shelfTouched();  // whoever asks again wants them for longer
    }
    return {};
}

Reply tuck(const Call&, const FaceParts& parts) {
    AppController& velko = parts.controller;
    if (const auto why = whyStill(velko.values())) {
        return refusal(*why);
    }
    // The usual event means nothing to an open menu, or while an activity shows.
    const bool needsClick = velko.values().stepsAside() || stateOf(parts).asPeeking() != nullptr;
    velko.handle(needsClick ? RevealEvent::toggle() : RevealEvent::autoTuck());
    velko.showMe().stop();  // only now: until then icons would flash up that shall be tucked
    return {};
}

Reply toggle(const Call&, const FaceParts& parts) {
    AppController& velko = parts.controller;
    if (const auto why = whyStill(velko.values())) {
        return refusal(*why);
    }
    if (velko.showMe().stop()) {
        return {};
    }
    const RevealState before = stateOf(parts);
    velko.handle(RevealEvent::toggle());
    return velko.values().hidesNothing() && stateOf(parts) == before ? Reply{.out = outAlready} : Reply{};
}

/// Why the layout can't be changed; nothing if it can.
std::optional<std::string> whyLocked(const FaceParts& parts) {
    return parts.controller.values().problems.layoutUnreadable
               ? std::optional<std::string>(
                     "Your layout file can't be read. Repair it, import one, or start afresh in the "
                     "settings.")
               : std::nullopt;
}

Reply saved(const FaceParts& parts) {
    const auto& failure = parts.controller.values().saveFailure;
    if (failure) {
        return refusal("It is done, but could not be saved: " + *failure);
    }
    // Not an error: it is done. But whoever relies on the way back should hear of it.
    const auto& unkept = parts.controller.values().historyFailure;
    return unkept ? Reply{.error = "It is done, but the layout before it could not be kept: " + *unkept}
                  : Reply();
}

Reply place(const Call& call, const FaceParts& parts) {
    if (const auto why = whyLocked(parts)) {
        return refusal(*why);
    }
    const auto app = appMeant(parts, call.argument(0), true);
    if (!app) {
        return refusal(app.error());
    }
    if (parts.controller.values().managed.places(app->bundleID)) {
        return refusal(std::string(managedInWords) + ".");
    }
    parts.controller.place(app->bundleID, sectionNamed(call.argument(1)).value_or(Section::bar));
    return saved(parts);
}

Reply ask(const Call& call, const FaceParts& parts) {
    if (const auto why = whyLocked(parts)) {
        return refusal(*why);
    }
    if (parts.controller.values().managed.sets(Switch::askAboutNewIcons)) {
        return refusal(std::string(managedInWords) + ".");
    }
    parts.controller.preferences().setSwitch(Switch::askAboutNewIcons, call.argument(0) == "on");
    return saved(parts);
}

Reply present(const Call& call, const FaceParts& parts) {
    if (call.argument(0) == "off") {
        parts.controller.presenting().stop();
        return {};
    }
    const auto why = parts.controller.presenting().start();
    return why ? refusal(*why) : Reply();
}

Reply search(const Call& call, const FaceParts& parts) {
    parts.host.onSearch(call.argument(0));
    return {};
}

Reply done(const std::expected<void, std::string>& result) {
    return result ? Reply() : refusal(result.error());
}

/// Unlike other changes it may replace a layout that can't be read: that is when it is needed most.
Reply restoreEarlier(const Call& call, const FaceParts& parts) {
    const std::string text = call.argument(0);
    std::uint32_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    const Reply reply = done(parts.controller.earlierLayouts().restore(number));
    return reply.status == status::done ? saved(parts) : reply;
}

constexpr auto acts = std::to_array<std::pair<Verb, Reply (*)(const Call&, const FaceParts&)>>({
    {Verb::show, show},
    {Verb::tuck, tuck},
    {Verb::toggle, toggle},
    {Verb::search, search},
    {Verb::place, place},
    {Verb::ask, ask},
    {Verb::present, present},
    {Verb::list,
     [](const Call& call, const FaceParts& parts) -> Reply {
         return {.out = call.has("--json") ? listJson(parts) : listText(parts)};
     }},
    {Verb::status,
     [](const Call& call, const FaceParts& parts) -> Reply {
         return {.out = call.has("--json") ? statusJson(parts) : statusText(parts)};
     }},
    {Verb::layoutExport,
     [](const Call& call, const FaceParts& parts) {
         return done(parts.controller.transfer().exportTo(call.argument(0)));
     }},
    {Verb::layoutImport,
     [](const Call& call, const FaceParts& parts) {
         const Reply reply = done(parts.controller.transfer().importFrom(call.argument(0)));
         return reply.status == status::done ? saved(parts) : reply;
     }},
    {Verb::historyRestore, restoreEarlier},
    {Verb::history,
     [](const Call& call, const FaceParts& parts) {
         const auto report = call.has("--json") ? historyJson(parts) : historyText(parts);
         return report ? Reply{.out = *report} : refusal(report.error());
     }},
    {Verb::log,
     [](const Call&, const FaceParts& parts) -> Reply { return {.out = parts.log.text() + "\n"}; }},
});

}  // namespace

std::optional<std::string> whyHelpless(const AppValues& values) {
    const Health health = values.health();
    return health.isOk() ? std::nullopt : std::optional(std::string(describe(health.kind)));
}

std::expected<PresentApp, std::string> appMeant(const FaceParts& parts, const std::string& text,
                                                bool others) {
    const Apps apps = appsKnown(parts, others);
    const FoldedText folded = FoldedText::of(text);
    Apps found = those(apps, [&](const PresentApp& app) { return app.bundleID == text; });
    if (found.empty() && !folded.letters.empty()) {
        found = those(
            apps, [&](const PresentApp& app) { return FoldedText::of(app.name).letters == folded.letters; });
    }
    if (found.empty() && !folded.letters.empty()) {
        found = those(apps, [&](const PresentApp& app) {
            return AppSearch::match(text, app.name) == NameMatch::wordStarts;
        });
    }
    if (found.size() == 1) {
        return found.front();
    }
    return std::unexpected(found.empty() ? "No app in the menu bar is called “" + text + "”."
                                         : severalFit(text, found));
}

Reply perform(const Call& call, const FaceParts& parts) {
    const auto* const act = std::ranges::find(acts, call.verb, [](const auto& each) { return each.first; });
    return act == acts.end() ? refusal("Nobody can do that here.") : act->second(call, parts);
}

}  // namespace velko::commands
