#pragma once

#include <map>
#include <string>

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

}  // namespace velko::web
