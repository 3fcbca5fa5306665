#pragma once

#include <map>
#include <optional>

#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Import/Importers.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Sorting/SortSession.h"

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
        summary,
        done  ///< the answers have been applied
    };
    enum class Kind { first, resort };
    /// Where the layout puts apps.
    using Places = std::map<BundleID, Section>;

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

    /// The apps to sort are known, or known anew. What was answered before holds, unless the user has since
    /// placed the app in another way, or has only accepted what would be suggested differently now. The
    /// first card without an answer shows.
    void begin(SortSession session, std::optional<ImportedLayout> imported, Places places);
    /// Whether an app on the cards has been placed in another way since `begin`.
    [[nodiscard]] bool isOutdated(const Places& places) const;

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
    /// Takes what is suggested for this card and for all that follow, but where the user has answered.
    void acceptRest();
    void startOver();
    /// The answers are stored now, and are forgotten here.
    void applied() noexcept;

    [[nodiscard]] bool canGoBack() const noexcept;
    void back() noexcept;

 private:
    struct Answer {
        Section section;
        std::optional<Section> placed;  ///< where the layout had the app at that time
        bool isAccepted;                ///< as it was suggested, along with others
    };

    void enter() noexcept;
    void showCards() noexcept;
    [[nodiscard]] Answer answerOf(const SortCard& card, Section section, bool isAccepted) const;
    [[nodiscard]] Section standing(const SortCard& card) const;
    void dropStaleAnswers(const SortSession& session);
    void replayAnswers(SortSession& session) const;

    Kind kind_;
    Step step_;
    std::optional<SortSession> session_;
    std::optional<ImportedLayout> imported_;
    Places places_;
    std::map<BundleID, Answer> answers_;  ///< what the user chose, whatever the session's cards are
    bool hasDecidedTiming_ = false;
    bool takesTiming_ = false;
};

}  // namespace velko
