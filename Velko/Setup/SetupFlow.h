#pragma once

#include <map>
#include <optional>

#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Import/Importers.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Sorting/SortSession.h"

namespace velko {

/// The step of the setup at which the user is, and the answers so far. A value: nothing outside it changes
/// until the answers are applied.
class SetupFlow {
 public:
    enum class Step {
        welcome,
        permission,
        found,  ///< what another organiser left behind; skipped when there is nothing
        sort,   ///< card by card; without a session as long as the menu bar is not known
        summary,
        done  ///< the answers are applied
    };
    enum class Kind { first, resort };
    /// The sections of apps in the layout.
    using Places = std::map<BundleID, Section>;

    explicit SetupFlow(Kind kind) noexcept
        : kind_(kind), step_(kind == Kind::first ? Step::welcome : Step::sort) {}

    [[nodiscard]] Kind kind() const noexcept { return kind_; }
    [[nodiscard]] Step step() const noexcept { return step_; }
    /// Nothing until `begin`.
    [[nodiscard]] const std::optional<SortSession>& session() const noexcept { return session_; }
    [[nodiscard]] const std::optional<ImportedLayout>& imported() const noexcept { return imported_; }
    [[nodiscard]] bool takesTiming() const noexcept { return takesTiming_; }

    void leaveWelcome(bool isTrusted) noexcept;
    void permissionGiven() noexcept;

    /// Starts with the apps to sort, or starts again with new ones. Earlier answers hold, with two
    /// exceptions: the user has placed the app in another way since, or only accepted a suggestion that would
    /// be different now. The first card without an answer shows.
    void begin(SortSession session, std::optional<ImportedLayout> imported, Places places);
    /// Whether the user has placed an app of the cards in another way since `begin`.
    [[nodiscard]] bool isOutdated(const Places& places) const;

    /// To be called when the window opens again. The apps may be others now, so the cards wait for another
    /// `begin`. The answers stay.
    void forgetSession() noexcept;

    /// Takes over the other organiser's timing or leaves it, and goes on to the cards.
    void decideTiming(bool take) noexcept;
    /// The reveal settings with the other organiser's timing in them, if the user wants that.
    [[nodiscard]] std::optional<RevealSettings> timing(RevealSettings settings) const;

    /// The section that the current card proposes: the user's earlier answer, or else the suggestion.
    [[nodiscard]] Section proposed() const;
    void choose(Section section);
    /// Accepts what is suggested for this card and all that follow, except where the user has answered.
    void acceptRest();
    void startOver();
    /// To be called when the answers are stored elsewhere. It forgets them.
    void applied() noexcept;

    [[nodiscard]] bool canGoBack() const noexcept;
    void back() noexcept;

 private:
    struct Answer {
        Section section;
        std::optional<Section> placed;  ///< the app's section in the layout at that time
        bool isAccepted;                ///< the user accepted the suggestion, together with others
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
    std::map<BundleID, Answer> answers_;  ///< what the user chose, for apps with a card now and for others
    bool hasDecidedTiming_ = false;
    bool takesTiming_ = false;
};

}  // namespace velko
