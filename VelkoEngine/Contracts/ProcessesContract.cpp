#include <algorithm>
#include <limits>
#include <string>

#include "VelkoEngine/Contracts/Contracts.h"
#include "VelkoEngine/Ports/Processes.h"

namespace velko::Contracts {

namespace {

constexpr ProcessID nobody = std::numeric_limits<ProcessID>::max();

}  // namespace

void checkProcesses(const Processes& processes, Checks& checks) {
    const ProcessID own = processes.ownPID();
    expect(checks, "processes: this process has a number", own > 0, std::to_string(own));

    const auto pids = processes.list();
    expect(checks, "processes: the list holds this process once", pids && std::ranges::count(*pids, own) == 1,
           pids ? std::to_string(pids->size()) + " processes" : "no list");

    const auto name = processes.name(own);
    expect(checks, "processes: this process has a name without a zero byte",
           name && !name->empty() && name->find('\0') == std::string::npos, name.value_or("no name"));
    expect(checks, "processes: a process that does not exist has no name", !processes.name(nobody));

    const auto usage = processes.resourceUsage(own);
    expect(checks, "processes: what this process has used is known", usage && usage->physicalFootprint > 0,
           usage ? std::to_string(usage->physicalFootprint) + " bytes" : "nothing");
    const TimeBase base = processes.timeBase();
    expect(checks, "processes: the unit of time makes sense", base.numerator > 0 && base.denominator > 0,
           std::to_string(base.numerator) + " / " + std::to_string(base.denominator));
    expect(checks, "processes: the null signal tells who exists",
           processes.nullSignal(own) == NullSignal::delivered &&
               processes.nullSignal(nobody) == NullSignal::noSuchProcess);
    expect(checks, "processes: a process that does not exist has used nothing",
           !processes.resourceUsage(nobody));
}

}  // namespace velko::Contracts
