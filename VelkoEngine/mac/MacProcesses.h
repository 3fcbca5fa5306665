#pragma once

#include "VelkoEngine/Ports/Processes.h"

namespace velko {

/// The kernel's process interface.
class MacProcesses final : public Processes {
 public:
    MacProcesses();

    [[nodiscard]] ProcessID ownPID() const override;
    [[nodiscard]] std::optional<std::vector<ProcessID>> list() const override;
    [[nodiscard]] std::optional<std::string> name(ProcessID pid) const override;
    [[nodiscard]] std::optional<ResourceUsage> resourceUsage(ProcessID pid) const override;
    [[nodiscard]] TimeBase timeBase() const override { return timeBase_; }
    [[nodiscard]] NullSignal nullSignal(ProcessID pid) const override;

 private:
    TimeBase timeBase_;
};

}  // namespace velko
