#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "VelkoCore/Geometry.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Watching/ChangeDetector.h"
#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

/// One icon in the menu bar. An app may own several; they differ by title and frame.
struct MenuBarItem {
    BundleID bundleID;
    std::string appName;
    ProcessID pid = 0;
    std::string title;  ///< empty when the item has no text
    Rect frame;         ///< points; origin at the top left of the primary screen, y grows downwards

    bool operator==(const MenuBarItem&) const = default;
};

}  // namespace velko

/// A hash of all five fields.
template <>
struct std::hash<velko::MenuBarItem> {
    [[nodiscard]] std::size_t operator()(const velko::MenuBarItem& item) const noexcept;
};

/// What the menu bar holds, read at every call. Main thread unless said otherwise.
namespace velko::Inventory {

/// A regular running app: one with a bundle that ends in ".app" and an identifier.
struct AppRef {
    ProcessID pid = 0;
    BundleID bundleID;
    std::string name;

    bool operator==(const AppRef&) const = default;
};

/// An app whose icons are to be read. With the elements of the reading before, each icon costs one message.
struct Watched {
    ProcessID pid = 0;
    std::vector<AXElement> elements{};  ///< empty: not known yet
};

/// The items of one app, for change detection.
struct AppReading {
    ProcessID pid = 0;
    std::vector<ItemReading> items;
    std::vector<AXElement> elements{};  ///< for the next reading; empty when one of them did not answer
};

/// What a read of the menu bar came to.
struct Found {
    std::vector<MenuBarItem> items;  ///< left to right; equal left edges keep the order of the apps
    bool isHeard = true;             ///< false when apps were asked and none answered
};

using ItemsHandler = std::function<void(Found)>;
using Readings = std::map<BundleID, AppReading>;
using ReadingsHandler = std::function<void(Readings)>;

/// Whether an application is of the kind that may own items: a bundle that ends in ".app", with an
/// identifier.
[[nodiscard]] bool mayHaveItems(const RunningApplication& app);

/// All regular running apps but this one, in the workspace's order.
[[nodiscard]] std::vector<AppRef> runningApps(const Platform& platform);

/// Reads every app's items in the background, at most four apps at once. A running process that does not
/// answer, as happens for a moment after the Mac wakes, keeps the items that it has in `known`; an element
/// that does not is left out.
[[nodiscard]] Task items(const Platform& platform, std::vector<MenuBarItem> known, ItemsHandler then);

/// The cheap refresh: keeps the items of `known` whose process still runs and reads only apps that have
/// none there. An app that gains or loses an item while it runs is seen by a full read only.
[[nodiscard]] Task itemsAdding(const Platform& platform, std::vector<MenuBarItem> known, ItemsHandler then);

/// Reads where the items of the given processes are now; origin at the top left of the primary screen.
[[nodiscard]] Task frames(const Platform& platform, const std::set<ProcessID>& pids,
                          std::function<void(std::vector<Rect>)> then);

/// Reads how the given apps' items look now; one that does not answer is left out. Where a known element is
/// gone, its app is asked for all of them anew. An item that comes while the elements are known is not seen.
[[nodiscard]] Task readings(const Platform& platform, std::map<BundleID, Watched> apps, ReadingsHandler then);

/// The processes whose items the menu bar's host shows now; blocks for a few messages. Any thread.
[[nodiscard]] std::set<ProcessID> visiblePIDs(const Platform& platform);

/// The frame of this program's own first status item; origin at the top left of the primary screen. Main
/// thread only: a program's own elements answer on the thread that asks.
[[nodiscard]] std::optional<Rect> ownItemFrame(const Platform& platform);

}  // namespace velko::Inventory
