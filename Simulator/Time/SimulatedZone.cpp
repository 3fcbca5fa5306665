#include "Simulator/Time/SimulatedZone.h"

#include <cstdlib>

#include "VelkoCore/Time/Date.h"

namespace velko {

namespace {

constexpr auto variable = "TZ";

}  // namespace

// NOLINTBEGIN(concurrency-mt-unsafe): the header says on which thread, and when
SimulatedZone::~SimulatedZone() {
    if (!isChanged_) {
        return;
    }
    if (before_) {
        setenv(variable, before_->c_str(), 1);
    } else {
        unsetenv(variable);
    }
    Calendar::rereadZone();
}

void SimulatedZone::set(const std::string& name) {
    if (!isChanged_) {
        isChanged_ = true;
        if (const char* before = std::getenv(variable)) {
            before_ = before;
        }
    }
    setenv(variable, name.c_str(), 1);
}
// NOLINTEND(concurrency-mt-unsafe)

void SimulatedZone::readAtLaunch() {
    Calendar::rereadZone();
}

}  // namespace velko
