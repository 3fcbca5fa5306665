#pragma once

#include "Playground/Web/Gate.h"

struct MHD_Connection;

namespace velko::web {

/// What a request says of itself, as the library has read it. It lives as long as the request.
[[nodiscard]] RequestHead headOf(MHD_Connection* connection, const char* method, const char* path);

}  // namespace velko::web
