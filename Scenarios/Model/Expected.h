#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "VelkoCore/Habits/AppUsage.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko::scenarios::model {

/// Which icons are out, and the one app whose menu was asked for.
struct Out {
    enum class Reach { barOnly, tuckedToo, buriedToo };

    Reach reach = Reach::barOnly;
    BundleID opened{};  ///< none: empty

    bool operator==(const Out&) const = default;

    [[nodiscard]] bool isRevealed() const { return reach != Reach::barOnly; }
    /// As the log says it.
    [[nodiscard]] std::string text() const;
    /// What is out after an event that the log calls so.
    [[nodiscard]] Out after(const std::string& event) const;
};

/// What has to come about by itself, and since when it can. A moment is forgotten as soon as anything happens
/// that may rightly put it off.
struct Awaited {
    using Uptime = MainThread::Uptime;

    std::optional<Uptime> offer{};            ///< the autopilot has something to offer, and it is time
    std::optional<Uptime> activity{};         ///< a Live Activity is drawn, and the bar is left alone
    std::map<BundleID, Uptime> watched{};     ///< a tucked app's icons are there to be compared
    std::map<BundleID, std::string> looks{};  ///< what each of those apps shows
    std::map<BundleID, Uptime> changed{};     ///< it shows something else
};

/// What should hold of Velko, as told by what happened to it. Says every rule once more, in the plainest way.
struct Expected {
    using Uptime = MainThread::Uptime;

    BundleID own{};
    Layout layout{};
    Out out{};
    RevealStyle style = RevealStyle::inline_;
    std::optional<BundleID> alone{};  ///< the app that "show me" shows, and nothing else
    Uptime aloneUntil{0};
    std::map<BundleID, Uptime> popped{};  ///< when each goes back
    std::map<BundleID, Uptime> lastPop{};
    bool isActivityOn = false;
    bool isActivityDismissed = false;
    bool isPutOff = false;           ///< the user has closed the note with something left in it
    std::set<std::string> putOff{};  ///< the suggestions that it held
    bool isEngineMissing = false;
    bool isUnreadable = false;
    bool isUntrusted = false;
    bool isRefused = false;         ///< the system shows everything, because it refused
    bool isAllShown = false;        ///< so does the user
    BundleIDs present{};            ///< the apps that the inventory names
    std::set<std::string> asked{};  ///< why something was applied, up to now
    Uptime startedAt{0};
    std::optional<Uptime> openedAt{};        ///< when an app's menu was last asked for
    Uptime tucksFrom{0};                     ///< before, revealed icons do not tuck themselves
    std::optional<Uptime> shelfClickedAt{};  ///< when a click outside closed the shelf
    std::optional<Uptime> noteClosedAt{};
    std::optional<Uptime> broomClickedAt{};  ///< when a click on the broom last came to its action
    Awaited awaited{};
    bool isMenuOpen = false;  ///< the broom's own, which takes the next click

    [[nodiscard]] bool isWell() const { return !isEngineMissing && !isUnreadable && !isUntrusted; }
    [[nodiscard]] Section sectionOf(const BundleID& app) const;
    [[nodiscard]] bool isWaiting(const BundleID& app) const;
    /// Whether Velko may ever hide it.
    [[nodiscard]] bool isOthers(const BundleID& app) const;
    [[nodiscard]] bool isAnyHideable() const;
    /// The apps whose icons show; nothing: all of them do.
    [[nodiscard]] std::optional<BundleIDs> shown() const;
    /// That, as the log says it.
    [[nodiscard]] std::string planText() const;

    void place(const BundleID& app, Section section);

 private:
    [[nodiscard]] bool isPlaceOut(Section section) const;
    [[nodiscard]] BundleIDs known() const;
    [[nodiscard]] bool isEverythingOut() const;
};

/// What the autopilot has to say, without figures: "com.example.app tucked", "com.example.app quit".
[[nodiscard]] std::set<std::string> suggestionsFor(const Expected& expected,
                                                   const std::map<BundleID, AppUsage>& usage, Date now);

/// Whether it is time to offer them, if there are any.
[[nodiscard]] bool isOfferTime(const Layout& layout, Date now);

/// The name of a section in the log.
[[nodiscard]] std::string nameOf(Section section);
[[nodiscard]] Section sectionCalled(const std::string& name);

}  // namespace velko::scenarios::model
