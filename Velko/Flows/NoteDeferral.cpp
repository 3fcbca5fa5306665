#include "Velko/Flows/NoteDeferral.h"

#include <algorithm>
#include <variant>

#include "Velko/Flows/AutopilotOffers.h"
#include "VelkoCore/Layout/Section.h"

namespace velko {

bool NoteDeferral::isAnythingToAsk() const {
    const Layout& layout = host_.values().layout;
    return !layout.inbox.empty() || (layout.autopilot.offerPending && !offers_.suggestions().empty());
}

void NoteDeferral::noteClosed() {
    offers_.settle();
    putOff_ = suggestedNow();
    host_.set(&AppValues::noteDeferred, isAnythingToAsk());
}

void NoteDeferral::askAgain() {
    host_.set(&AppValues::noteDeferred, false);
}

void NoteDeferral::suggestionsChecked(bool offered) {
    if (offered || !std::ranges::includes(putOff_, suggestedNow())) {
        askAgain();
    }
}

std::set<std::string> NoteDeferral::suggestedNow() const {
    std::set<std::string> suggested;
    for (const TidySuggestion& suggestion : offers_.suggestions()) {
        const auto* const move = std::get_if<TidySuggestion::MoveTo>(&suggestion.change);
        suggested.insert(suggestion.bundleID + " " + std::string(move ? name(move->section) : "quit"));
    }
    return suggested;
}

}  // namespace velko
