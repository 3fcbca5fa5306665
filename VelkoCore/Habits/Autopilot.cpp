#include "VelkoCore/Habits/Autopilot.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <set>
#include <utility>

#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"

namespace velko {

namespace {

std::string daysText(std::int64_t days) {
    return days == 1 ? "1 day" : std::to_string(days) + " days";
}

struct Describe {
    std::string operator()(const TidySuggestion::Unused& reason) const {
        return "Gathering dust: not clicked in " + daysText(reason.days);
    }
    std::string operator()(const TidySuggestion::UsedOften& reason) const {
        return "In and out a lot: clicked on " + std::to_string(reason.days) + " of the last " +
               daysText(Timing::autopilotPromoteWindowDays);
    }
    std::string operator()(const TidySuggestion::Heavy& reason) const {
        return "Hogging " + describe(reason.usage) + ", and not clicked in " + daysText(reason.days);
    }
};

}  // namespace

std::string describe(const TidySuggestion::Reason& reason) {
    return std::visit(Describe{}, reason);
}

namespace {

/// What the past says about one app.
struct History {
    std::int64_t watchedDays;
    std::int64_t idleDays;
    std::int64_t clickedDays;  ///< of the last week's days

    [[nodiscard]] bool isWarm() const { return watchedDays >= Timing::autopilotWarmUpDays; }
    [[nodiscard]] bool isOften() const { return clickedDays >= Timing::autopilotPromoteMinDays; }
};

bool isLeftAlone(const Layout& layout, const BundleID& bundleID, Date now) {
    const auto snoozed = layout.autopilot.snoozedUntil.find(bundleID);
    return layout.alwaysKeep.contains(bundleID) || layout.isWaiting(bundleID) ||
           AllowlistPlanner::isAlwaysAllowed(bundleID) ||
           (snoozed != layout.autopilot.snoozedUntil.end() && snoozed->second > now);
}

std::int64_t idleDays(const Autopilot::SuggestionsRequest& request, const BundleID& bundleID,
                      std::int64_t watchedDays) {
    const Layout& layout = request.layout;
    if (const auto click = layout.lastClicked.find(bundleID); click != layout.lastClicked.end()) {
        return request.calendar.daysBetween(click->second, request.now);
    }
    const auto seen = layout.firstSeen.find(bundleID);
    // Before it was watched or seen, an app may have been clicked every day.
    return seen == layout.firstSeen.end()
               ? watchedDays
               : std::min(watchedDays, request.calendar.daysBetween(seen->second, request.now));
}

std::int64_t clickedDays(const Autopilot::SuggestionsRequest& request, const BundleID& bundleID) {
    const auto entry = request.layout.clickDays.find(bundleID);
    if (entry == request.layout.clickDays.end()) {
        return 0;
    }
    // Days that were noted in different time zones may be the same local day, so days are told apart by their
    // age.
    std::set<std::int64_t> ages;
    std::set<Date> withoutAge;
    for (const Date day : entry->second) {
        const std::optional<std::int64_t> age = request.calendar.dayDifference(day, request.now);
        if (!age) {
            withoutAge.insert(day);
        } else if (*age >= 0 && *age < Timing::autopilotPromoteWindowDays) {
            ages.insert(*age);
        }
    }
    return static_cast<std::int64_t>(ages.size() + withoutAge.size());
}

/// The section that suits an app's past better than the one it is in.
std::optional<TidySuggestion> moveSuggestion(const BundleID& bundleID, Section section,
                                             const History& history) {
    const auto tidyAwayTo = [&](Section target) {
        return TidySuggestion{.bundleID = bundleID,
                              .change = TidySuggestion::MoveTo{target},
                              .reason = TidySuggestion::Unused{history.idleDays}};
    };
    if (section == Section::bar) {
        const bool isIdle = history.isWarm() && history.idleDays >= Timing::autopilotTuckAfterDays;
        return isIdle ? std::optional{tidyAwayTo(Section::tucked)} : std::nullopt;
    }
    if (section == Section::tucked && history.isWarm() &&
        history.idleDays >= Timing::autopilotBuryAfterDays) {
        return tidyAwayTo(Section::buried);
    }
    // A promotion needs no warm-up: the clicks themselves are the evidence.
    if (!history.isOften()) {
        return std::nullopt;
    }
    return TidySuggestion{.bundleID = bundleID,
                          .change = TidySuggestion::MoveTo{Section::bar},
                          .reason = TidySuggestion::UsedOften{history.clickedDays}};
}

std::optional<TidySuggestion> suggestion(const Autopilot::SuggestionsRequest& request,
                                         const BundleID& bundleID, std::int64_t watchedDays) {
    const History history{.watchedDays = watchedDays,
                          .idleDays = idleDays(request, bundleID, watchedDays),
                          .clickedDays = clickedDays(request, bundleID)};
    const auto usage = request.usage.find(bundleID);
    if (usage != request.usage.end() && AppHealth::isHeavy(usage->second) && history.isWarm() &&
        history.idleDays >= Timing::autopilotTuckAfterDays) {
        return TidySuggestion{.bundleID = bundleID,
                              .change = TidySuggestion::Quit{},
                              .reason = TidySuggestion::Heavy{history.idleDays, usage->second}};
    }
    return moveSuggestion(bundleID, request.layout.section(bundleID), history);
}

}  // namespace

std::vector<TidySuggestion> Autopilot::suggestions(const SuggestionsRequest& request) {
    const std::optional<Date> watchingSince = request.layout.autopilot.watchingSince;
    if (!watchingSince) {
        return {};
    }
    const std::int64_t watchedDays = request.calendar.daysBetween(*watchingSince, request.now);
    std::vector<TidySuggestion> found;
    for (const BundleID& bundleID : request.running) {
        if (found.size() == request.atMost) {
            break;
        }
        if (isLeftAlone(request.layout, bundleID, request.now)) {
            continue;
        }
        if (auto one = suggestion(request, bundleID, watchedDays)) {
            found.push_back(*std::move(one));
        }
    }
    return found;
}

bool Autopilot::isOfferDue(const OfferRequest& request) {
    const AutopilotState& state = request.layout.autopilot;
    if (!state.enabled || !request.layout.hasCompletedSetup || state.offerPending ||
        request.suggestionCount == 0) {
        return false;
    }
    return !state.lastOffered ||
           request.calendar.daysBetween(*state.lastOffered, request.now) >= Timing::autopilotOfferEveryDays;
}

}  // namespace velko
