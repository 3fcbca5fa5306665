#include "VelkoCore/Visibility/RevealMachine.h"

#include <variant>

namespace velko {

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
        // From `revealed` this goes further out; only from there on it comes back.
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
