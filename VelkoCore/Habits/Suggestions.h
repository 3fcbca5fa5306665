#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "VelkoCore/BundleID.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Time/Calendar.h"
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

}  // namespace velko
