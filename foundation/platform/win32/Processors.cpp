#include "foundation/platform/Processors.h"

#include <windows.h>

#include <algorithm>

namespace Quorvex::Platform {

std::uint32_t GetProcessorCount() {
    SYSTEM_INFO system{};
    GetSystemInfo(&system);
    return std::max<std::uint32_t>(1, system.dwNumberOfProcessors);
}

} // namespace Quorvex::Platform
