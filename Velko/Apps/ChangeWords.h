#pragma once

#include <cstddef>
#include <string>

#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Layout/UndoHistory.h"

/// What the user's changes are called: in the Edit menu, in the log, and in the line that offers to take the
/// last one back. Pure functions.
namespace velko::ChangeWords {

/// One app by its name, or several by their number.
struct Apps {
    std::string name{};  ///< of the only one
    std::size_t count = 1;
};

[[nodiscard]] UndoHistory::Change placed(const Apps& apps, Section section);
[[nodiscard]] UndoHistory::Change forgotten(const Apps& apps);
[[nodiscard]] UndoHistory::Change sorted();
[[nodiscard]] UndoHistory::Change imported(const std::string& layoutName);
[[nodiscard]] UndoHistory::Change restored(const std::string& when);
[[nodiscard]] UndoHistory::Change putOff(const std::string& app);
[[nodiscard]] UndoHistory::Change askedAgain(const std::string& app);
[[nodiscard]] UndoHistory::Change kept(const std::string& app, bool keeps);

}  // namespace velko::ChangeWords
