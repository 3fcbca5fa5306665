#pragma once

#include <string_view>

#include "Playground/Web/Session.h"
#include "VelkoCore/Files/Json.h"

namespace velko::web {

/// Does one of the things that a page may ask for, named by `action`, and then all that is due because of
/// it. `body` holds what the thing is about; what is missing or makes no sense in it changes nothing.
Done act(Session& session, std::string_view action, const Json& body);

/// Whether there is an action of that name.
[[nodiscard]] bool isAction(std::string_view action);

}  // namespace velko::web
