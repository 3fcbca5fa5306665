#pragma once

namespace velko {

/// What Velko says wherever it says that the system has refused to hide icons. It is no problem of health:
/// the next plan may pass.
inline constexpr const char* refusalInWords = "macOS didn't let Velko hide icons, so all of them are out.";

}  // namespace velko
