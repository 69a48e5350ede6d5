#include "foundation/platform/Processors.h"

#include <sched.h>
#include <unistd.h>

#include <algorithm>

namespace Quorvex::Platform {

std::uint32_t GetProcessorCount() {
    // What a container or taskset leaves to this process: more threads than that would only get in each other's way.
    cpu_set_t allowed;
    if (sched_getaffinity(0, sizeof allowed, &allowed) == 0)
        return static_cast<std::uint32_t>(std::max(1, CPU_COUNT(&allowed)));
    // The set has 1024 places; a machine with more processors makes the call fail.
    return static_cast<std::uint32_t>(std::max(1L, sysconf(_SC_NPROCESSORS_ONLN)));
}

} // namespace Quorvex::Platform
