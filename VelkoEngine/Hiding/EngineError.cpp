#include "VelkoEngine/Hiding/EngineError.h"

namespace velko {

std::string describe(EngineError error) {
    switch (error) {
        case EngineError::unavailable: return "Menu bar hiding is not supported on this macOS build";
        case EngineError::activationFailed: break;
    }
    return "macOS refused the hiding request";
}

std::string describe(const EngineFailure& failure) {
    const auto* const reported = std::get_if<FrameworkError>(&failure);
    return reported != nullptr ? reported->description : describe(std::get<EngineError>(failure));
}

}  // namespace velko
