#include "VelkoCore/Sorting/TidySuggestion.h"

#include "VelkoCore/Time/Timing.h"

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

}  // namespace velko
