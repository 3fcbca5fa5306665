#include "Simulator/Files/SimulatedDisk.h"

#include <algorithm>
#include <cstddef>

namespace velko {

FileCalls SimulatedDisk::calls() const {
    FileCalls calls;
    calls.write = [write = calls.write, counter = bytesWritten_](int file, const void* data,
                                                                 std::size_t size) {
        const auto written = write(file, data, size);
        *counter += static_cast<std::uint64_t>(std::max<std::ptrdiff_t>(written, 0));
        return written;
    };
    calls.fsync = [](int) { return 0; };  // nobody pulls the plug of a Mac in memory
    // Locks are the machine's own: whoever else has the folder on the host does not work on this Mac.
    calls.flock = [](int, int) { return 0; };
    calls.ftruncate = [](int, long long) { return 0; };
    return calls;
}

}  // namespace velko
