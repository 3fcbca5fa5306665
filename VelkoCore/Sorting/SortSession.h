#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "VelkoCore/BundleID.h"
#include "VelkoCore/Habits/Suggestions.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Time/Calendar.h"
#include "VelkoCore/Time/Date.h"

namespace velko {

struct ImportedLayout;

/// One app to be sorted.
struct SortCard {
    BundleID bundleID;
    std::string name;
    std::optional<Date> lastClicked;
    Suggestion suggestion;

    bool operator==(const SortCard&) const = default;
};

/// One run of sorting apps card by card: a value that keeps the cards, the choices and the place.
class SortSession {
 public:
    struct App {
        BundleID bundleID;
        std::string name;
    };

    struct Request {
        const std::vector<App>& apps;  ///< in the order of the cards
        const std::map<BundleID, Date>& lastClicked;
        const std::map<BundleID, Section>& current;  ///< sections to take over, before any other rule
        std::optional<std::string> importSource;  ///< where `current` comes from; absent: the user's layout
        /// What another organiser left, for apps of which `current` says nothing.
        const ImportedLayout* imported = nullptr;
        Date now;
        Calendar calendar;
    };

    explicit SortSession(const Request& request);

    [[nodiscard]] const std::vector<SortCard>& cards() const noexcept { return cards_; }
    [[nodiscard]] const std::map<BundleID, Section>& choices() const noexcept { return choices_; }
    [[nodiscard]] std::size_t index() const noexcept { return index_; }

    /// The card now shown, or null when all are done.
    [[nodiscard]] const SortCard* current() const noexcept;
    [[nodiscard]] bool isFinished() const noexcept;

    /// Puts the card's app into a section and shows the next card.
    void choose(Section section);
    /// Shows the card before; what was chosen for it holds until something else is.
    void back() noexcept;
    /// Takes the suggestion of this card and of all that follow.
    void acceptRest();

    /// How many choices name a section.
    [[nodiscard]] std::size_t count(Section section) const noexcept;

    /// A section for every app: the chosen one, else the suggested one.
    [[nodiscard]] std::map<BundleID, Section> result() const;

    bool operator==(const SortSession&) const = default;

 private:
    std::vector<SortCard> cards_;
    std::map<BundleID, Section> choices_;
    std::size_t index_ = 0;
};

}  // namespace velko
