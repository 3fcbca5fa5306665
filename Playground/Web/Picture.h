#pragma once

#include <map>
#include <string>

#include "Playground/Html/Images.h"
#include "Playground/Web/Session.h"
#include "VelkoCore/Files/Json.h"

namespace velko::web {

/// What a page shows: markup for each of its changing regions, by name, and plain facts, by which it sets
/// its own controls.
struct Picture {
    std::map<std::string, std::string> regions;
    Json facts;

    bool operator==(const Picture&) const = default;
};

/// Draws the whole page as it is now.
[[nodiscard]] Picture draw(Session& session);

// The page's regions, one function each. They are in DrawBar.cpp, DrawDesk.cpp and DrawSurfaces.cpp.

/// How apps are called on this Mac, running or not.
[[nodiscard]] html::NameOf namesOn(Session& session);

/// The icons that show in the menu bar, left to right.
[[nodiscard]] std::string drawBar(Session& session);
/// A surface with its title bar, if it has one; empty while it is closed.
[[nodiscard]] std::string drawSurface(Session& session, const NamedSurface& surface);
/// The system's settings, when Velko has sent its user there.
[[nodiscard]] std::string drawSystemSettings(Session& session);
/// The open menu; empty while none is.
[[nodiscard]] std::string drawMenu(Session& session);
/// The question, alert or panel that waits for an answer; empty while none does.
[[nodiscard]] std::string drawSheet(Session& session);
/// The apps that run and those that could, to choose one from.
[[nodiscard]] std::string drawApps(Session& session);
/// The newest lines of the log.
[[nodiscard]] std::string drawLog(Session& session);
/// The plan in force and what it follows from.
[[nodiscard]] std::string drawPlan(Session& session);
/// The layout file as it is on the disk.
[[nodiscard]] std::string drawLayoutFile(Session& session);
/// What Velko has opened, copied or asked for outside its own surfaces.
[[nodiscard]] std::string drawElsewhere(Session& session);

}  // namespace velko::web
