#pragma once

#include <optional>
#include <string>

#include "VelkoCore/NonCopyable.h"

namespace velko {

/// The time zone of the machine. The C library has one zone for the whole process, so this is the only place
/// that changes it, and only one machine at a time may. Main thread, while no other thread reads the
/// environment.
class SimulatedZone final : private NonCopyable {
 public:
    SimulatedZone() = default;
    /// Gives the process the zone back that it had.
    ~SimulatedZone();

    /// The machine goes to a zone, for instance "Pacific/Auckland". Nothing tells programs of it: each counts
    /// in its old zone until it reads the zone again.
    void set(const std::string& name);

    /// A program starts, and reads the zone.
    static void readAtLaunch();

 private:
    bool isChanged_ = false;
    std::optional<std::string> before_;  ///< what the process had been told; nothing: nothing
};

}  // namespace velko
