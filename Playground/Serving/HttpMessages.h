#pragma once

#include "Playground/Serving/Gate.h"
#include "Playground/Serving/Http.h"

struct MHD_Connection;
struct MHD_Response;

// Translates requests and answers between the library and our values.

namespace velko::web {

/// What a request says about itself, as the library has read it. It is valid as long as the request.
[[nodiscard]] RequestHead headOf(MHD_Connection* connection, const char* method, const char* path);

/// Adds the headers of an answer, and the headers that every response has.
void addHeaders(MHD_Response& response, const HttpAnswer& answer);

}  // namespace velko::web
