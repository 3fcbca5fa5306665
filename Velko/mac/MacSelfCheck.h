#pragma once

#include "Velko/Checks/SelfCheck.h"

namespace velko {

/// Does what a command line asks for that does not run the app. Returns the exit status. Some commands end
/// the process themselves, because a read of an app that hangs may still be going on then.
[[nodiscard]] int runSelfCheck(const SelfCheck::Command& command);

}  // namespace velko
