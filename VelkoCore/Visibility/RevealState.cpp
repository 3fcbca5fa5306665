#include "VelkoCore/Visibility/RevealState.h"

#include <utility>
#include <variant>

namespace velko {

RevealState RevealState::collapsed() {
    return RevealState{Collapsed{}};
}

RevealState RevealState::revealed() {
    return RevealState{Revealed{}};
}

RevealState RevealState::revealedWithBuried() {
    return RevealState{RevealedWithBuried{}};
}

RevealState RevealState::peeking(BundleID bundleID, RevealState base) {
    return RevealState{std::make_shared<const Peeking>(Peeking{std::move(bundleID), std::move(base)})};
}

RevealState RevealState::shareSafe(RevealState previous) {
    return RevealState{std::make_shared<const ShareSafe>(ShareSafe{std::move(previous)})};
}

bool RevealState::isRevealed() const noexcept {
    const RevealState* state = this;
    while (const Peeking* peek = state->asPeeking()) {
        state = &peek->base;
    }
    return std::holds_alternative<Revealed>(state->value_) ||
           std::holds_alternative<RevealedWithBuried>(state->value_);
}

const RevealState::Peeking* RevealState::asPeeking() const noexcept {
    const auto* peek = std::get_if<std::shared_ptr<const Peeking>>(&value_);
    return peek == nullptr ? nullptr : peek->get();
}

const RevealState::ShareSafe* RevealState::asShareSafe() const noexcept {
    const auto* share = std::get_if<std::shared_ptr<const ShareSafe>>(&value_);
    return share == nullptr ? nullptr : share->get();
}

bool operator==(const RevealState& left, const RevealState& right) noexcept {
    if (left.value_.index() != right.value_.index()) {
        return false;
    }
    if (const auto* peek = left.asPeeking()) {
        const auto* other = right.asPeeking();
        return peek->bundleID == other->bundleID && peek->base == other->base;
    }
    if (const auto* share = left.asShareSafe()) {
        return share->previous == right.asShareSafe()->previous;
    }
    return true;
}

namespace {

struct StateText {
    std::string operator()(RevealState::Collapsed /*state*/) const { return "collapsed"; }
    std::string operator()(RevealState::Revealed /*state*/) const { return "revealed"; }
    std::string operator()(RevealState::RevealedWithBuried /*state*/) const { return "revealed with buried"; }
    std::string operator()(const std::shared_ptr<const RevealState::Peeking>& peek) const {
        return "opening " + peek->bundleID + " (from " + describe(peek->base) + ")";
    }
    std::string operator()(const std::shared_ptr<const RevealState::ShareSafe>& /*state*/) const {
        return "share-safe";
    }
};

}  // namespace

std::string describe(const RevealState& state) {
    return std::visit(StateText{}, state.value());
}

namespace {

using Kind = RevealEvent::Kind;

RevealState afterPeekEvent(const RevealState& state, const RevealState::Peeking& peek,
                           const RevealEvent& event) {
    switch (event.kind) {
        case Kind::peek: return RevealState::peeking(event.bundleID, peek.base);
        case Kind::toggle:
        case Kind::toggleWithBuried: return RevealState::collapsed();
        case Kind::peekEnded: return peek.base;
        case Kind::shareStarted: return RevealState::shareSafe(peek.base);
        // Auto-tuck does not take an app away that the user has just opened.
        case Kind::autoTuck:
        case Kind::shareStopped: break;
    }
    return state;
}

RevealState afterPlainEvent(const RevealState& state, const RevealEvent& event) {
    switch (event.kind) {
        case Kind::peek: return RevealState::peeking(event.bundleID, state);
        case Kind::toggle: return state.isRevealed() ? RevealState::collapsed() : RevealState::revealed();
        // From `revealed` this shows the buried icons too. The next time it hides everything again.
        case Kind::toggleWithBuried:
            return std::holds_alternative<RevealState::RevealedWithBuried>(state.value())
                       ? RevealState::collapsed()
                       : RevealState::revealedWithBuried();
        case Kind::autoTuck: return RevealState::collapsed();
        case Kind::shareStarted: return RevealState::shareSafe(state);
        case Kind::peekEnded:
        case Kind::shareStopped: break;
    }
    return state;
}

}  // namespace

RevealState RevealMachine::next(const RevealState& state, const RevealEvent& event) {
    if (const auto* share = state.asShareSafe()) {
        return event.kind == Kind::shareStopped ? share->previous : state;
    }
    if (const auto* peek = state.asPeeking()) {
        return afterPeekEvent(state, *peek, event);
    }
    return afterPlainEvent(state, event);
}

std::string describe(const RevealEvent& event) {
    switch (event.kind) {
        case Kind::peek: return "peek " + event.bundleID;
        case Kind::toggle: return "toggle";
        case Kind::toggleWithBuried: return "toggleWithBuried";
        case Kind::autoTuck: return "autoTuck";
        case Kind::peekEnded: return "peekEnded";
        case Kind::shareStarted: return "shareStarted";
        case Kind::shareStopped: return "shareStopped";
    }
    return {};
}

}  // namespace velko
