#pragma once

#include <string>

#include "VelkoCore/BundleID.h"
#include "VelkoCore/Visibility/RevealState.h"

namespace velko {

/// What can happen to the reveal state.
struct RevealEvent {
    enum class Kind { peek, toggle, toggleWithBuried, autoTuck, peekEnded, shareStarted, shareStopped };

    Kind kind = Kind::toggle;
    BundleID bundleID;  ///< the app to show; only with `peek`

    [[nodiscard]] static RevealEvent peek(BundleID bundleID) { return {Kind::peek, std::move(bundleID)}; }
    [[nodiscard]] static RevealEvent toggle() { return {Kind::toggle, {}}; }
    [[nodiscard]] static RevealEvent toggleWithBuried() { return {Kind::toggleWithBuried, {}}; }
    [[nodiscard]] static RevealEvent autoTuck() { return {Kind::autoTuck, {}}; }
    [[nodiscard]] static RevealEvent peekEnded() { return {Kind::peekEnded, {}}; }
    [[nodiscard]] static RevealEvent shareStarted() { return {Kind::shareStarted, {}}; }
    [[nodiscard]] static RevealEvent shareStopped() { return {Kind::shareStopped, {}}; }

    bool operator==(const RevealEvent&) const = default;
};

/// The event as the log says it: the case's name, and for a peek its app: "peek com.example.app".
[[nodiscard]] std::string describe(const RevealEvent& event);

/// The rules by which the reveal state moves. Knows no time: when `autoTuck` and `peekEnded` come is
/// the sender's business.
namespace RevealMachine {

/// The state after `event`; the same state where the event means nothing.
[[nodiscard]] RevealState next(const RevealState& state, const RevealEvent& event);

}  // namespace RevealMachine

}  // namespace velko
