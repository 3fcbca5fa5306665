#include "VelkoEngine/Ports/Task.h"

namespace velko {

Task& Task::operator=(Task&& other) noexcept {
    // The new handle is in place before the old one goes: its work may be what is running right now.
    const Task old(std::exchange(handle_, std::exchange(other.handle_, nullptr)));
    return *this;
}

void Task::cancel() noexcept {
    if (const auto handle = std::exchange(handle_, nullptr)) {
        handle->cancel();
    }
}

}  // namespace velko
