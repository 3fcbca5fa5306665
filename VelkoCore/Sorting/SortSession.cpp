#include "VelkoCore/Sorting/SortSession.h"

#include <algorithm>
#include <array>
#include <utility>

#include "VelkoCore/Import/Importers.h"

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

namespace {

/// The section to take over, if there is one.
std::optional<Suggestion> placedBefore(const BundleID& bundleID, const SortSession::Request& request) {
    const auto from = [&](const std::map<BundleID, Section>& sections, const std::string& source) {
        const auto placed = sections.find(bundleID);
        return placed == sections.end() ? std::nullopt
                                        : std::optional(Suggestion{.section = placed->second,
                                                                   .reason = Suggestion::Imported{source}});
    };
    auto own = from(request.current, request.importSource.value_or("your current layout"));
    return own || request.imported == nullptr ? own
                                              : from(request.imported->sections, request.imported->source);
}

SortCard cardFor(const SortSession::App& app, const SortSession::Request& request) {
    SortCard card{.bundleID = app.bundleID, .name = app.name, .lastClicked = {}, .suggestion = {}};
    const auto click = request.lastClicked.find(app.bundleID);
    if (click != request.lastClicked.end()) {
        card.lastClicked = click->second;
    }
    if (auto placed = placedBefore(app.bundleID, request)) {
        card.suggestion = *std::move(placed);
    } else {
        card.suggestion = Suggestions::suggest({.bundleID = app.bundleID,
                                                .lastClicked = card.lastClicked,
                                                .now = request.now,
                                                .calendar = request.calendar});
    }
    return card;
}

}  // namespace

SortSession::SortSession(const Request& request) {
    cards_.reserve(request.apps.size());
    for (const App& app : request.apps) {
        cards_.push_back(cardFor(app, request));
    }
}

const SortCard* SortSession::current() const noexcept {
    return isFinished() ? nullptr : &cards_[index_];
}

bool SortSession::isFinished() const noexcept {
    return index_ == cards_.size();
}

void SortSession::choose(Section section) {
    if (const SortCard* card = current()) {
        choices_.insert_or_assign(card->bundleID, section);
        ++index_;
    }
}

void SortSession::back() noexcept {
    if (index_ > 0) {
        --index_;
    }
}

void SortSession::acceptRest() {
    while (const SortCard* card = current()) {
        choose(card->suggestion.section);
    }
}

std::size_t SortSession::count(Section section) const noexcept {
    return static_cast<std::size_t>(
        std::ranges::count_if(choices_, [&](const auto& choice) { return choice.second == section; }));
}

std::map<BundleID, Section> SortSession::result() const {
    std::map<BundleID, Section> sections = choices_;
    for (const SortCard& card : cards_) {
        sections.try_emplace(card.bundleID, card.suggestion.section);
    }
    return sections;
}

}  // namespace velko
