#import "VelkoEngine/mac/MacProcesses.h"

#include <libproc.h>
#include <mach/mach_time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <limits>

#include "VelkoEngine/Text/Utf8.h"

namespace velko {

MacProcesses::MacProcesses() {
    mach_timebase_info_data_t info{};
    if (mach_timebase_info(&info) == KERN_SUCCESS) {
        timeBase_ = {.numerator = info.numer, .denominator = info.denom};
    }
}

ProcessID MacProcesses::ownPID() const {
    return getpid();
}

std::optional<std::vector<ProcessID>> MacProcesses::list() const {
    const int count = proc_listallpids(nullptr, 0);
    constexpr int sizeOfPID = sizeof(ProcessID);
    if (count <= 0 || count > std::numeric_limits<int>::max() / sizeOfPID / 2) {
        return std::nullopt;
    }
    // Twice the room, for processes that start between the two calls.
    std::vector<ProcessID> pids(static_cast<std::size_t>(count) * 2);
    const int filled = proc_listallpids(pids.data(), count * 2 * sizeOfPID);
    if (filled <= 0) {
        return std::nullopt;
    }
    pids.resize(std::min(static_cast<std::size_t>(filled), pids.size()));
    return pids;
}

std::optional<std::string> MacProcesses::name(ProcessID pid) const {
    std::array<char, 256> buffer{};
    const int length = proc_name(pid, buffer.data(), buffer.size());
    if (length <= 0) {
        return std::nullopt;
    }
    return repairedUtf8({buffer.data(), strnlen(buffer.data(), buffer.size())});
}

std::optional<ResourceUsage> MacProcesses::resourceUsage(ProcessID pid) const {
    rusage_info_v4 info{};
    if (proc_pid_rusage(pid, RUSAGE_INFO_V4, reinterpret_cast<rusage_info_t*>(&info)) != 0) {
        return std::nullopt;
    }
    return ResourceUsage{.userTime = info.ri_user_time,
                         .systemTime = info.ri_system_time,
                         .physicalFootprint = info.ri_phys_footprint};
}

NullSignal MacProcesses::nullSignal(ProcessID pid) const {
    if (kill(pid, 0) == 0) {
        return NullSignal::delivered;
    }
    return errno == EPERM ? NullSignal::notPermitted : NullSignal::noSuchProcess;
}

}  // namespace velko
