#pragma once

#include <chrono>
#include <string>

#include "VelkoCore/Layout/LayoutHistory.h"

namespace velko {

class AppNames;
struct AppValues;

/// What is said of layouts of earlier days, in words for people. Pure functions.
namespace EarlierWords {

/// A moment within a sentence: "today at 09:30", "yesterday at 23:05", "1 March at 09:30", with the year if
/// it is another one.
[[nodiscard]] std::string when(std::chrono::local_seconds moment, std::chrono::local_seconds now);

/// The cause after the moment: "before an import".
[[nodiscard]] std::string before(HistoryCause cause);

/// What is different: "3 apps lie elsewhere: Slack was in the bar, Zoom was tucked, and 1 more. Some settings
/// differ." Apps in the menu bar come first.
[[nodiscard]] std::string differences(const RestoredChanges& changes, const AppValues& values,
                                      const AppNames& names);

}  // namespace EarlierWords

}  // namespace velko
