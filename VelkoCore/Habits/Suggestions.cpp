#include "VelkoCore/Habits/Suggestions.h"

#include <algorithm>
#include <array>

namespace velko {

namespace {

constexpr std::array<std::string_view, 17> barKeywords{
    "vpn",        "wireguard", "tailscale",       "tunnelblick", "mullvad",        "nordvpn",
    "expressvpn", "protonvpn", "1password",       "bitwarden",   "lastpass",       "dashlane",
    "keeper",     "zoom.xos",  "microsoft.teams", "webex",       "com.hnc.discord"};

char lowerCased(char letter) noexcept {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

Section byDaysWithoutClick(std::int64_t days) noexcept {
    if (days < 1) {
        return Section::bar;
    }
    return days > Suggestions::buryAfterDays ? Section::buried : Section::tucked;
}

struct ReasonText {
    std::string operator()(Suggestion::LastClicked reason) const {
        switch (reason.days) {
            case 0: return "Last clicked today";
            case 1: return "Last clicked yesterday";
            default: return "Last clicked " + std::to_string(reason.days) + " days ago";
        }
    }
    std::string operator()(const Suggestion::Imported& reason) const { return "From " + reason.source; }
    std::string operator()(Suggestion::AppType /*reason*/) const { return "Suggested by app type"; }
};

}  // namespace

std::string describe(const Suggestion::Reason& reason) {
    return std::visit(ReasonText{}, reason);
}

Suggestion Suggestions::suggest(const Request& request) {
    if (!request.lastClicked) {
        return {.section = byAppType(request.bundleID), .reason = Suggestion::AppType{}};
    }
    const std::int64_t days = request.calendar.daysBetween(*request.lastClicked, request.now);
    return {.section = byDaysWithoutClick(days), .reason = Suggestion::LastClicked{days}};
}

Section Suggestions::byAppType(std::string_view bundleID) {
    std::string lowered{bundleID};
    std::ranges::transform(lowered, lowered.begin(), lowerCased);
    const bool belongsInBar = std::ranges::any_of(
        barKeywords, [&](std::string_view keyword) { return lowered.find(keyword) != std::string::npos; });
    return belongsInBar ? Section::bar : Section::tucked;
}

}  // namespace velko
