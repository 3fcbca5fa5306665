#pragma once

#include <string>
#include <variant>

#include "VelkoEngine/Ports/PrivateFramework.h"

namespace velko {

/// Why icons could not be hidden, where the system gives no reason of its own.
enum class EngineError { unavailable, activationFailed };

/// Why icons could not be hidden: our word for it or the framework's.
using EngineFailure = std::variant<EngineError, FrameworkError>;

/// The failure in words for people.
[[nodiscard]] std::string describe(EngineError error);
[[nodiscard]] std::string describe(const EngineFailure& failure);

}  // namespace velko
