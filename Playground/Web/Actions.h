#pragma once

#include <string_view>

#include "Playground/Web/Session.h"
#include "VelkoCore/Files/Json.h"

namespace velko::web {

/// Does the action of that name, then all work that is due because of it. `body` holds the details of the
/// action. If they are missing or make no sense, nothing changes.
Done act(Session& session, std::string_view action, const Json& body);

/// Whether there is an action of that name.
[[nodiscard]] bool isAction(std::string_view action);

}  // namespace velko::web
