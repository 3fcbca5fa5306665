#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "VelkoCore/Habits/AppUsage.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Layout/ManagedLayout.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko::scenarios::model {

/// Which icons are out, and the app whose menu the user wants to open.
struct Out {
    enum class Reach { barOnly, tuckedToo, buriedToo };

    Reach reach = Reach::barOnly;
    BundleID opened{};          ///< none: empty
    bool isPresenting = false;  ///< only what an audience may see is, and the rest waits

    bool operator==(const Out&) const = default;

    [[nodiscard]] bool isRevealed() const { return !isPresenting && reach != Reach::barOnly; }
    /// As the log says it.
    [[nodiscard]] std::string text() const;
    /// What is out after the event with that name in the log.
    [[nodiscard]] Out after(const std::string& event) const;
};

/// What has to happen by itself, and since when that is possible. A moment is forgotten when something
/// happens that may delay it.
struct Awaited {
    using Uptime = MainThread::Uptime;

    std::optional<Uptime> offer{};            ///< the autopilot has something to offer, and it is time
    std::optional<Uptime> activity{};         ///< a Live Activity is drawn, and Velko does not change the bar
    std::map<BundleID, Uptime> watched{};     ///< a tucked app's icons are there to be compared
    std::map<BundleID, std::string> looks{};  ///< what each of those apps shows
    std::map<BundleID, Uptime> changed{};     ///< it shows something else
    Uptime undisturbedFrom{0};                ///< before that, nobody need notice a change
};

/// What Velko should show and know, after what has happened to it. It repeats every rule of Velko in the
/// simplest way.
struct Expected {
    using Uptime = MainThread::Uptime;

    BundleID own{};
    Layout layout{};  ///< that holds
    ManagedLayout managed{};
    Layout ownLayout{};  ///< the user's, below what is managed
    Out out{};
    Uptime presentedAt{0};
    Date presentedSince{};
    bool isPinned = false;  ///< the shelf does not go by itself
    RevealStyle style = RevealStyle::inline_;
    bool isWide = false;              ///< the broom is on a display on which nothing is hidden
    bool hasNoRoom = false;           ///< what comes out next has no room in the bar
    std::optional<BundleID> alone{};  ///< the app that "show me" shows, and nothing else
    Uptime aloneUntil{0};
    std::map<BundleID, Uptime> popped{};  ///< when each goes back
    std::map<BundleID, Uptime> lastPop{};
    std::map<BundleID, std::vector<Uptime>> pops{};  ///< all of them, until the app is made quiet
    bool isActivityOn = false;
    bool isActivityDismissed = false;
    bool isPutOff = false;           ///< the user has closed the note with something left in it
    std::set<std::string> putOff{};  ///< the suggestions that it held
    bool isEngineMissing = false;
    bool isUnreadable = false;
    bool isUntrusted = false;
    bool isRefused = false;         ///< the system refused to hide, so everything shows
    bool isAllShown = false;        ///< the user wanted to see everything
    BundleIDs present{};            ///< the apps that the inventory names
    std::set<std::string> asked{};  ///< the reasons that a new plan may have
    Uptime startedAt{0};
    std::optional<Uptime> openedAt{};        ///< when an app's menu was last asked for
    Uptime tucksFrom{0};                     ///< revealed icons are not tucked before this moment
    std::optional<Uptime> shelfClickedAt{};  ///< when a click outside closed the shelf
    std::optional<Uptime> noteClosedAt{};
    std::optional<Uptime> tuckedAt{};        ///< when icons last tucked themselves
    std::optional<Uptime> broomClickedAt{};  ///< when a click on the broom last came to its action
    Awaited awaited{};
    Uptime attendedAt{0};     ///< when somebody was last there, so that Velko looked around
    bool isMenuOpen = false;  ///< the broom's menu; the next click only closes it

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
    /// Another layout of the user's is there, below what is managed.
    void takeOwn(Layout found);
    /// Takes what is managed off again, after whatever was done to the layout.
    void keepOwn() { ownLayout = managed.ownPart(layout, ownLayout); }

 private:
    [[nodiscard]] bool isPlaceOut(Section section) const;
    [[nodiscard]] BundleIDs known() const;
    [[nodiscard]] bool isEverythingOut() const;
};

/// What the autopilot should suggest, without numbers: "com.example.app tucked", "com.example.app quit".
[[nodiscard]] std::set<std::string> suggestionsFor(const Expected& expected,
                                                   const std::map<BundleID, AppUsage>& usage, Date now);

/// Whether it is time to offer them, if there are any.
[[nodiscard]] bool isOfferTime(const Layout& layout, Date now);

/// The name of a section in the log.
[[nodiscard]] std::string nameOf(Section section);
[[nodiscard]] Section sectionCalled(const std::string& name);

}  // namespace velko::scenarios::model
