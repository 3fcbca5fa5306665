#pragma once

#include "Playground/Serving/Gate.h"
#include "Playground/Serving/Http.h"

struct MHD_Connection;
struct MHD_Response;

// Requests and answers, between our values and the library's.

namespace velko::web {

/// What a request says of itself, as the library has read it. It lives as long as the request.
[[nodiscard]] RequestHead headOf(MHD_Connection* connection, const char* method, const char* path);

/// Gives a response the headers of an answer, and those that every response carries.
void addHeaders(MHD_Response& response, const HttpAnswer& answer);

}  // namespace velko::web
