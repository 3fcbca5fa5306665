#pragma once

#include <cstdint>
#include <memory>

#include "VelkoCore/Files/AtomicFile.h"

namespace velko {

/// The disk of a machine: files lie in a folder of the host, and what is written to them is counted.
class SimulatedDisk final {
 public:
    /// The file system's calls. They may outlive this.
    [[nodiscard]] FileCalls calls() const;
    [[nodiscard]] std::uint64_t bytesWritten() const noexcept { return *bytesWritten_; }

 private:
    std::shared_ptr<std::uint64_t> bytesWritten_ = std::make_shared<std::uint64_t>(0);
};

}  // namespace velko
