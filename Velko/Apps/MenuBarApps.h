#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Layout/Section.h"

namespace velko {

class AppController;
class Workspace;
struct AppValues;
struct FailedOpening;

/// An app that has icons in the menu bar now. Its icons may be hidden.
struct PresentApp {
    BundleID bundleID;
    std::string name;

    bool operator==(const PresentApp&) const = default;
};

/// The apps that have icons in the menu bar now. Each is there once, in the order of its leftmost icon, from
/// left to right.
[[nodiscard]] std::vector<PresentApp> presentApps(const AppValues& values);

/// Whether the user may choose a section for an app. Velko itself and the system's items have none.
[[nodiscard]] bool canBePlaced(const AppController& controller, const BundleID& bundleID);

/// Whether an app has icons in the menu bar now. They may be hidden.
[[nodiscard]] bool isPresent(const AppValues& values, const BundleID& bundleID);

/// The apps in the menu bar that Velko hides because of their section. Each is there once, from left to
/// right. Velko itself and the system's items are never among them.
struct HiddenApps {
    std::vector<PresentApp> tucked;
    std::vector<PresentApp> buried;

    [[nodiscard]] bool areNone() const noexcept { return tucked.empty() && buried.empty(); }
};

[[nodiscard]] HiddenApps hiddenApps(const AppController& controller);

/// What the user can do with an app's icon, as a button or a menu item says it.
[[nodiscard]] std::string placingTitle(Section section);

/// A name within a sentence: one that is written from right to left does not turn the words around it.
[[nodiscard]] std::string inSentence(const std::string& name);

/// "1 app", "5 apps".
[[nodiscard]] std::string appsInWords(std::size_t count);

class AppNames;

/// Why an app's menu did not open, in words for the user.
[[nodiscard]] std::string describe(const FailedOpening& failed, const AppNames& names);

/// Why an app's icon has to stay hidden, so that its menu can't open, in words for people; nothing if it
/// need not.
[[nodiscard]] std::optional<std::string> whyKeptIn(const AppController& controller, const BundleID& bundleID,
                                                   const Workspace& workspace);

/// Why there is no app to show or to sort, in words for the user.
[[nodiscard]] std::string whyNoApps(const AppValues& values);

/// The names of apps, for people, as this Mac knows them at one moment. Main thread.
class AppNames final {
 public:
    /// Both outlive this.
    AppNames(const AppValues& values, const Workspace& workspace);

    /// The name that the app's icon gives; without an icon the one that it runs under; else the one that it
    /// is installed under. An app that this Mac does not know goes by its identifier.
    [[nodiscard]] std::string of(const BundleID& bundleID) const;

    [[nodiscard]] bool isRunning(const BundleID& bundleID) const { return running_.contains(bundleID); }

 private:
    const AppValues& values_;
    const Workspace& workspace_;
    std::map<BundleID, std::optional<std::string>>
        running_;  ///< those that run, with the first name that one has
};

}  // namespace velko
