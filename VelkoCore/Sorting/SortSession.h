#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Time/Date.h"

namespace velko {

/// Where an app might go, and why.
struct Suggestion {
    /// The app's icon was last clicked so many local days ago; never negative.
    struct LastClicked {
        std::int64_t days = 0;
        bool operator==(const LastClicked&) const = default;
    };
    /// Taken over from another organiser or from a layout, named for people.
    struct Imported {
        std::string source;
        bool operator==(const Imported&) const = default;
    };
    /// Judged by the kind of app.
    struct AppType {
        bool operator==(const AppType&) const = default;
    };
    using Reason = std::variant<LastClicked, Imported, AppType>;

    Section section = Section::tucked;
    Reason reason = AppType{};

    bool operator==(const Suggestion&) const = default;
};

/// The line under a card: "Last clicked yesterday", "From Ice", "Suggested by app type".
[[nodiscard]] std::string describe(const Suggestion::Reason& reason);

/// Proposes a section for an app that no layout places.
namespace Suggestions {

/// An app that was last clicked longer ago than this many days is proposed as buried.
inline constexpr std::int64_t buryAfterDays = 30;

struct Request {
    const BundleID& bundleID;
    std::optional<Date> lastClicked;
    Date now;
    Calendar calendar;
};

/// By the last click if there is one, else by the kind of app. Apps without history are never buried.
[[nodiscard]] Suggestion suggest(const Request& request);

/// `bar` for VPN clients, password managers, and meeting and chat apps, else `tucked`.
[[nodiscard]] Section byAppType(std::string_view bundleID);

}  // namespace Suggestions

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
    /// Shows the card before. Its choice stays until another one is made.
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
