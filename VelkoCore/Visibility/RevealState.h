#pragma once

#include <memory>
#include <string>
#include <variant>

#include "VelkoCore/Identifiers.h"

namespace velko {

/// Which of the hidden icons are out on display right now.
class RevealState {
 public:
    struct Collapsed {
        bool operator==(const Collapsed&) const = default;
    };
    struct Revealed {
        bool operator==(const Revealed&) const = default;
    };
    struct RevealedWithBuried {
        bool operator==(const RevealedWithBuried&) const = default;
    };
    struct Peeking;    ///< one app's icons on top of a base state
    struct ShareSafe;  ///< the screen is shared; remembers the state to return to

    /// Only the `bar` apps are shown; also the state of a default-made value.
    [[nodiscard]] static RevealState collapsed();
    /// Tucked apps are shown too, in the bar or in the shelf.
    [[nodiscard]] static RevealState revealed();
    /// Tucked and buried apps are shown.
    [[nodiscard]] static RevealState revealedWithBuried();
    [[nodiscard]] static RevealState peeking(BundleID bundleID, RevealState base);
    [[nodiscard]] static RevealState shareSafe(RevealState previous);

    RevealState() = default;

    /// Whether tucked icons count as out: a peek answers for its base, a shared screen never does.
    [[nodiscard]] bool isRevealed() const noexcept;

    using Value = std::variant<Collapsed, Revealed, RevealedWithBuried, std::shared_ptr<const Peeking>,
                               std::shared_ptr<const ShareSafe>>;

    /// The case in force, for `std::visit`. The pointers are never null.
    [[nodiscard]] const Value& value() const noexcept { return value_; }

    /// The peek in force, or null.
    [[nodiscard]] const Peeking* asPeeking() const noexcept;
    /// The shared-screen state in force, or null.
    [[nodiscard]] const ShareSafe* asShareSafe() const noexcept;

    /// Equal by content, however deep.
    friend bool operator==(const RevealState& left, const RevealState& right) noexcept;

 private:
    explicit RevealState(Value value) noexcept : value_(std::move(value)) {}

    Value value_;
};

struct RevealState::Peeking {
    BundleID bundleID;
    RevealState base;
};

struct RevealState::ShareSafe {
    RevealState previous;
};

/// The state as the log says it: "revealed with buried", "opening X (from collapsed)".
[[nodiscard]] std::string describe(const RevealState& state);

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
