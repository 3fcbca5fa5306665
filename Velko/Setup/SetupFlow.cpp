#include "Velko/Setup/SetupFlow.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace velko {

namespace {

/// Gives the session the answers again and goes to the first card without one.
void replay(const std::map<BundleID, Section>& answers, SortSession& session) {
    std::size_t firstOpen = session.cards().size();
    while (const SortCard* card = session.current()) {
        const auto answer = answers.find(card->bundleID);
        if (answer == answers.end()) {
            firstOpen = std::min(firstOpen, session.index());
        }
        session.choose(answer == answers.end() ? card->suggestion.section : answer->second);
    }
    while (session.index() > firstOpen) {
        session.back();
    }
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

void SetupFlow::begin(SortSession session, std::optional<ImportedLayout> imported) {
    session_ = std::move(session);
    imported_ = std::move(imported);
    if (!answers_.empty()) {
        replay(answers_, *session_);
    }
    enter();
}

void SetupFlow::forgetSession() noexcept {
    session_.reset();
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

std::optional<RevealSettings> SetupFlow::timing(RevealSettings settings) const {
    if (!takesTiming_ || !imported_) {
        return std::nullopt;
    }
    settings.autoTuckSeconds = imported_->autoTuckSeconds.value_or(settings.autoTuckSeconds);
    settings.hover = imported_->hover.value_or(settings.hover);
    return settings;
}

Section SetupFlow::proposed() const {
    const SortCard* card = session_ ? session_->current() : nullptr;
    if (card == nullptr) {
        return Section::bar;
    }
    const auto answer = answers_.find(card->bundleID);
    return answer == answers_.end() ? card->suggestion.section : answer->second;
}

void SetupFlow::choose(Section section) {
    const SortCard* card = session_ ? session_->current() : nullptr;
    if (step_ != Step::sort || !session_ || card == nullptr) {
        return;
    }
    answers_[card->bundleID] = section;
    session_->choose(section);
    showCards();
}

void SetupFlow::acceptRest() {
    if (session_) {
        session_->acceptRest();
        answers_ = session_->choices();
        showCards();
    }
}

void SetupFlow::startOver() {
    answers_.clear();
    while (session_ && session_->index() > 0) {
        session_->back();
    }
    showCards();
}

bool SetupFlow::canGoBack() const noexcept {
    const bool hasCardBefore = session_ && session_->index() > 0;
    return step_ != Step::welcome && (kind_ == Kind::first || hasCardBefore);
}

void SetupFlow::back() noexcept {
    if (!canGoBack()) {
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
