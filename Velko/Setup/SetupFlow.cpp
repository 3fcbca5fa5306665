#include "Velko/Setup/SetupFlow.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace velko {

namespace {

std::optional<Section> placeOf(const SetupFlow::Places& places, const BundleID& bundleID) {
    const auto place = places.find(bundleID);
    return place == places.end() ? std::nullopt : std::optional(place->second);
}

}  // namespace

void SetupFlow::leaveWelcome(bool isTrusted) noexcept {
    if (isTrusted) {
        enter();
    } else {
        step_ = Step::permission;
    }
}

void SetupFlow::permissionGiven() noexcept {
    if (step_ == Step::permission) {
        enter();
    }
}

void SetupFlow::begin(SortSession session, std::optional<ImportedLayout> imported, Places places) {
    imported_ = std::move(imported);
    places_ = std::move(places);
    dropStaleAnswers(session);
    if (!answers_.empty()) {
        replayAnswers(session);
    }
    session_ = std::move(session);
    isReviewing_ = false;
    if (step_ == Step::sort || step_ == Step::summary) {
        enter();
    }
}

bool SetupFlow::isOutdated(const Places& places) const {
    return session_ && std::ranges::any_of(session_->cards(), [&](const SortCard& card) {
               return placeOf(places, card.bundleID) != placeOf(places_, card.bundleID);
           });
}

void SetupFlow::dropStaleAnswers(const SortSession& session) {
    std::erase_if(answers_, [this](const auto& entry) {
        const auto& [bundleID, answer] = entry;
        return placeOf(places_, bundleID) != answer.placed;
    });
    for (const SortCard& card : session.cards()) {
        const auto answer = answers_.find(card.bundleID);
        if (answer != answers_.end() && answer->second.isAccepted &&
            answer->second.section != card.suggestion.section) {
            answers_.erase(answer);
        }
    }
}

/// Puts the answers into the new session, and goes to the first card without one.
void SetupFlow::replayAnswers(SortSession& session) const {
    std::size_t firstOpen = session.cards().size();
    while (const SortCard* card = session.current()) {
        if (!answers_.contains(card->bundleID)) {
            firstOpen = std::min(firstOpen, session.index());
        }
        session.choose(standing(*card));
    }
    while (session.index() > firstOpen) {
        session.back();
    }
}

/// The user's answer to a card, or else its suggestion.
Section SetupFlow::standing(const SortCard& card) const {
    const auto answer = answers_.find(card.bundleID);
    return answer == answers_.end() ? card.suggestion.section : answer->second.section;
}

void SetupFlow::forgetSession() noexcept {
    session_.reset();
    isReviewing_ = false;
    if (step_ != Step::welcome) {
        step_ = Step::sort;
    }
}

void SetupFlow::enter() noexcept {
    if (imported_ && !hasDecidedTiming_) {
        step_ = Step::found;
    } else {
        showCards();
    }
}

void SetupFlow::showCards() noexcept {
    step_ = session_ && session_->isFinished() ? Step::summary : Step::sort;
}

void SetupFlow::decideTiming(bool take) noexcept {
    hasDecidedTiming_ = true;
    takesTiming_ = take;
    showCards();
}

std::optional<RevealSettings> SetupFlow::revealing(RevealSettings settings) const {
    const bool takes = takesTiming_ && imported_;
    if (!takes && !notchedStyle_) {
        return std::nullopt;
    }
    if (takes) {
        settings.autoTuckSeconds = imported_->autoTuckSeconds.value_or(settings.autoTuckSeconds);
        settings.hover = imported_->hover.value_or(settings.hover);
    }
    settings.notchedStyle = notchedStyle_.value_or(settings.notchedStyle);
    return settings;
}

Section SetupFlow::proposed() const {
    const SortCard* card = session_ ? session_->current() : nullptr;
    return card == nullptr ? Section::bar : standing(*card);
}

void SetupFlow::choose(Section section) {
    if (step_ != Step::sort || !session_) {
        return;
    }
    if (const SortCard* card = session_->current()) {
        answers_.insert_or_assign(card->bundleID, answerOf(*card, section, false));
        session_->choose(section);
        if (std::exchange(isReviewing_, false)) {
            goToEnd();
        }
        showCards();
    }
}

void SetupFlow::review(const BundleID& bundleID) {
    if (step_ == Step::summary && goToCard(bundleID)) {
        isReviewing_ = true;
        step_ = Step::sort;
    }
}

void SetupFlow::move(const BundleID& bundleID, Section section) {
    if (step_ != Step::summary || !session_ || !goToCard(bundleID)) {
        return;
    }
    if (const SortCard* card = session_->current()) {
        answers_.insert_or_assign(card->bundleID, answerOf(*card, section, false));
        session_->choose(section);
    }
    goToEnd();
}

/// Whether there is such a card.
bool SetupFlow::goToCard(const BundleID& bundleID) {
    const auto isIts = [&](const SortCard& card) { return card.bundleID == bundleID; };
    if (!session_ || std::ranges::none_of(session_->cards(), isIts)) {
        return false;
    }
    for (const SortCard* card = session_->current(); card == nullptr || !isIts(*card);
         card = session_->current()) {
        session_->back();
    }
    return true;
}

void SetupFlow::goToEnd() {
    if (!session_) {
        return;
    }
    while (const SortCard* card = session_->current()) {
        session_->choose(standing(*card));
    }
}

void SetupFlow::acceptRest() {
    if (!session_) {
        return;
    }
    SortSession& session = *session_;
    while (const SortCard* card = session.current()) {
        // If the user has answered this card before and gone back, that answer holds.
        answers_.try_emplace(card->bundleID, answerOf(*card, card->suggestion.section, true));
        session.choose(standing(*card));
    }
    showCards();
}

SetupFlow::Answer SetupFlow::answerOf(const SortCard& card, Section section, bool isAccepted) const {
    return {.section = section, .placed = placeOf(places_, card.bundleID), .isAccepted = isAccepted};
}

void SetupFlow::startOver() {
    answers_.clear();
    isReviewing_ = false;
    while (session_ && session_->index() > 0) {
        session_->back();
    }
    showCards();
}

void SetupFlow::applied() noexcept {
    answers_.clear();
    session_.reset();
    step_ = Step::done;
}

bool SetupFlow::canGoBack() const noexcept {
    if (isReviewing_) {
        return true;
    }
    const bool hasCardBefore = session_ && session_->index() > 0;
    return step_ != Step::welcome && step_ != Step::done && (kind_ == Kind::first || hasCardBefore);
}

void SetupFlow::back() {
    if (!canGoBack()) {
        return;
    }
    if (std::exchange(isReviewing_, false)) {
        goToEnd();
        showCards();
        return;
    }
    const bool isSorting = step_ == Step::sort || step_ == Step::summary;
    if (isSorting && session_ && session_->index() > 0) {
        session_->back();
        step_ = Step::sort;
    } else {
        step_ = isSorting && imported_ ? Step::found : Step::welcome;
    }
}

}  // namespace velko
