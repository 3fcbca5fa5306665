#pragma once

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "Velko/Flows/FlowHost.h"
#include "VelkoCore/Habits/Autopilot.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class Beat;
class Log;

/// Offers tidy suggestions, at most once a week, and does what the user answers. Main thread; owned by the
/// controller.
class AutopilotOffers final : private NonCopyable {
 public:
    /// `checked` is called after each hourly check and told whether it made an offer.
    AutopilotOffers(FlowHost& host, const Platform& platform, Log& log, std::function<void(bool)> checked);

    /// Adds its hourly check to the beat.
    void start(Beat& beat);

    /// Sees to it that no clock that was ahead silences us until then. To be called when a layout was loaded
    /// and when the clock may have jumped; the hourly check does it too.
    void heedClock();

    /// Notes that clicks are watched from now on, unless they have been before.
    void clicksAreWatched();

    /// What the autopilot proposes for the apps in the menu bar now, the first ones up to so many; nothing
    /// while it is switched off.
    [[nodiscard]] std::vector<TidySuggestion> suggestions(std::size_t atMost = Autopilot::noLimit) const;

    // The user's answers. Each leaves the app alone for a month, the last one for good.
    void accept(const TidySuggestion& suggestion);
    void dismiss(const BundleID& bundleID);
    void alwaysKeep(const BundleID& bundleID);

    /// Ends the time for which the app is left alone.
    void askAgain(const BundleID& bundleID);

    /// The app's name for people, as in the words for what the user changes.
    [[nodiscard]] std::string nameOf(const BundleID& bundleID) const;

    /// Asks every process of the app to quit; it may say no.
    void askToQuit(const BundleID& bundleID);

    /// Ends the offer when nothing of it is left. To be called after whatever may settle a suggestion.
    void settle();

 private:
    void check();
    [[nodiscard]] Date now() const;

    FlowHost& host_;
    Platform platform_;
    Log& log_;
    std::function<void(bool)> checked_;
};

/// Whether Velko has something to ask, and whether the user has put it off. Main thread; owned by the
/// controller.
class NoteDeferral final : private NonCopyable {
 public:
    NoteDeferral(FlowHost& host, AutopilotOffers& offers) : host_(host), offers_(offers) {}

    /// Whether icons wait for an answer, or an offer is open.
    [[nodiscard]] bool isAnythingToAsk() const;

    /// The note was closed, however that happened: what is left is put off.
    void noteClosed();

    /// Something new is to be asked, which was not put off.
    void askAgain();

    /// The autopilot has looked for suggestions. An offer is new, and so is a suggestion that was not
    /// there when the note closed.
    void suggestionsChecked(bool offered);

 private:
    /// The suggestions without their figures, which change from day to day.
    [[nodiscard]] std::set<std::string> suggestedNow() const;

    FlowHost& host_;
    AutopilotOffers& offers_;
    std::set<std::string> putOff_;
};

/// Gets to know the apps in the menu bar; new ones stay tucked, or out if the user prefers that, until the
/// user says where they go. Main thread; owned by the controller.
class Newcomers final : private NonCopyable {
 public:
    Newcomers(FlowHost& host, const MainThread& clock, Log& log, NoteDeferral& note)
        : host_(host), clock_(clock), log_(log), note_(note) {}

    /// Takes what a scan found. Does not apply.
    void admit(const BundleIDs& present, const BundleID& ownBundleID);

    /// To be called after each scan: no longer asks about apps that have been away for a week.
    void letAbsentGo(const BundleIDs& present, const BundleID& ownBundleID);

 private:
    FlowHost& host_;
    const MainThread& clock_;
    Log& log_;
    NoteDeferral& note_;
};

}  // namespace velko
