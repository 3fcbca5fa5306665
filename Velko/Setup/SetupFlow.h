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
    /// Whether the card is that of an app whose place the user wants to change at the end.
    [[nodiscard]] bool isReviewing() const noexcept { return isReviewing_; }
    /// How icons come out on displays with a notch; nothing if the user has not chosen that here.
    [[nodiscard]] std::optional<RevealStyle> notchedStyle() const noexcept { return notchedStyle_; }

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
    void chooseNotchedStyle(RevealStyle style) noexcept { notchedStyle_ = style; }
    /// The reveal settings with what the user chose here: the other organiser's timing, and how icons come
    /// out beside a notch. Nothing if neither was chosen.
    [[nodiscard]] std::optional<RevealSettings> revealing(RevealSettings settings) const;

    /// The section that the current card proposes: the user's earlier answer, or else the suggestion.
    [[nodiscard]] Section proposed() const;
    void choose(Section section);
    /// Accepts what is suggested for this card and all that follow, except where the user has answered.
    void acceptRest();
    /// Goes back from the summary to the card of one app. Its answer leads to the summary again.
    void review(const BundleID& bundleID);
    /// Puts one of the summary's apps elsewhere.
    void move(const BundleID& bundleID, Section section);
    void startOver();
    /// To be called when the answers are stored elsewhere. It forgets them.
    void applied() noexcept;

    [[nodiscard]] bool canGoBack() const noexcept;
    void back();

 private:
    struct Answer {
        Section section;
        std::optional<Section> placed;  ///< the app's section in the layout at that time
        bool isAccepted;                ///< the user accepted the suggestion, together with others
    };

    void enter() noexcept;
    void showCards() noexcept;
    bool goToCard(const BundleID& bundleID);
    void goToEnd();
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
    bool isReviewing_ = false;
    std::optional<RevealStyle> notchedStyle_;
};

}  // namespace velko
