#pragma once

#include <map>
#include <optional>

#include "VelkoCore/BundleID.h"
#include "VelkoCore/Importers.h"
#include "VelkoCore/RevealSettings.h"
#include "VelkoCore/Section.h"
#include "VelkoCore/SortSession.h"

namespace velko {

/// Where the user is in the setup and what they have answered so far. A value: nothing outside it changes
/// until the answers are applied.
class SetupFlow {
 public:
    enum class Step {
        welcome,
        permission,
        found,  ///< what another organiser left; left out when there is nothing
        sort,   ///< card by card; without a session while the menu bar is not known yet
        summary
    };
    enum class Kind { first, resort };

    explicit SetupFlow(Kind kind) noexcept
        : kind_(kind), step_(kind == Kind::first ? Step::welcome : Step::sort) {}

    [[nodiscard]] Kind kind() const noexcept { return kind_; }
    [[nodiscard]] Step step() const noexcept { return step_; }
    /// Absent until `begin`.
    [[nodiscard]] const std::optional<SortSession>& session() const noexcept { return session_; }
    [[nodiscard]] const std::optional<ImportedLayout>& imported() const noexcept { return imported_; }
    [[nodiscard]] bool takesTiming() const noexcept { return takesTiming_; }

    void leaveWelcome(bool isTrusted) noexcept;
    void permissionGiven() noexcept;

    /// The apps to sort are known, or known anew. What was answered before holds; the first card without
    /// an answer shows.
    void begin(SortSession session, std::optional<ImportedLayout> imported);

    /// The window opens again: the apps may be others now, so the cards wait for another `begin`. The
    /// answers stay.
    void forgetSession() noexcept;

    /// Whether the other organiser's timing is taken over; on to the cards.
    void decideTiming(bool take) noexcept;
    /// The reveal settings with what the other organiser says, if the user wants that.
    [[nodiscard]] std::optional<RevealSettings> timing(RevealSettings settings) const;

    /// The section that stands for the current card unless another is chosen: the earlier answer, else the
    /// suggestion.
    [[nodiscard]] Section proposed() const;
    void choose(Section section);
    void acceptRest();
    void startOver();

    [[nodiscard]] bool canGoBack() const noexcept;
    void back() noexcept;

 private:
    void enter() noexcept;
    void showCards() noexcept;

    Kind kind_;
    Step step_;
    std::optional<SortSession> session_;
    std::optional<ImportedLayout> imported_;
    std::map<BundleID, Section> answers_;  ///< what the user chose, whatever the session's cards are
    bool hasDecidedTiming_ = false;
    bool takesTiming_ = false;
};

}  // namespace velko
