#include "foundation/platform/SystemVersion.h"

namespace Quorvex::Platform {

// Everything that the program asks a version for is there: the answers are those of a current system.

std::uint32_t QueryMajorVersion() {
    return 10;
}

bool QueryIsVersionAtLeast(std::uint32_t, std::uint32_t, std::uint32_t) {
    return true;
}

} // namespace Quorvex::Platform
