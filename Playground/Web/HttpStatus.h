#pragma once

/// What answers say of themselves.
namespace velko::web::status {

inline constexpr int ok = 200;
inline constexpr int noContent = 204;
inline constexpr int seeOther = 303;
inline constexpr int badRequest = 400;
inline constexpr int forbidden = 403;
inline constexpr int notFound = 404;
inline constexpr int methodNotAllowed = 405;
inline constexpr int lengthRequired = 411;
inline constexpr int tooLarge = 413;
inline constexpr int unsupportedType = 415;
inline constexpr int misdirected = 421;
inline constexpr int unavailable = 503;

}  // namespace velko::web::status
