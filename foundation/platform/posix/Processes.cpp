#include "foundation/platform/Processes.h"

#include <unistd.h>

namespace Quorvex::Platform {

std::uint32_t GetThisProcessId() {
    return static_cast<std::uint32_t>(getpid());
}

std::uint32_t GetThisThreadId() {
    return static_cast<std::uint32_t>(gettid());
}

} // namespace Quorvex::Platform
