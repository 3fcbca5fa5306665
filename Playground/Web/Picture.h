#pragma once

#include <map>
#include <string>

#include "Playground/Html/Images.h"
#include "Playground/Web/Session.h"
#include "VelkoCore/Files/Json.h"

namespace velko::web {

/// What a page shows: the markup of each region that can change, by name, and plain facts for the page's own
/// controls.
struct Picture {
    std::map<std::string, std::string> regions;
    Json facts;

    bool operator==(const Picture&) const = default;
};

/// Draws the whole page.
[[nodiscard]] Picture draw(Session& session);

// Each region of the page has one function. They are in DrawBar.cpp, DrawDesk.cpp and DrawSurfaces.cpp.

/// The names of the apps on this Mac, running or not.
[[nodiscard]] html::NameOf namesOn(Session& session);

/// The icons that show in the menu bar, left to right.
[[nodiscard]] std::string drawBar(Session& session);
/// A surface, with its title bar if it has one; empty while it is closed.
[[nodiscard]] std::string drawSurface(Session& session, const Surfaces::Traits& surface);
/// The window of the system's settings; empty while it is closed.
[[nodiscard]] std::string drawSystemSettings(Session& session);
/// The open menu; empty while no menu is open.
[[nodiscard]] std::string drawMenu(Session& session);
/// The question, alert or panel that waits for an answer; empty if there is none.
[[nodiscard]] std::string drawSheet(Session& session);
/// The apps that run and those that can be launched, as a list to choose from.
[[nodiscard]] std::string drawApps(Session& session);
/// The newest lines of the log.
[[nodiscard]] std::string drawLog(Session& session);
/// The plan in force, and the values that it follows from.
[[nodiscard]] std::string drawPlan(Session& session);
/// The layout file as it is on disk.
[[nodiscard]] std::string drawLayoutFile(Session& session);
/// What Velko has done outside its own surfaces: opened a page or file, copied a text, looked for updates.
[[nodiscard]] std::string drawElsewhere(Session& session);

}  // namespace velko::web
