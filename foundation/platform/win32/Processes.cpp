#include "foundation/platform/Processes.h"

#include <windows.h>

namespace Quorvex::Platform {

std::uint32_t GetThisProcessId() {
    return GetCurrentProcessId();
}

std::uint32_t GetThisThreadId() {
    return GetCurrentThreadId();
}

} // namespace Quorvex::Platform
