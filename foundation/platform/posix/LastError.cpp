#include "foundation/platform/LastError.h"

#include <cerrno>

namespace Quorvex::Platform {

std::uint32_t GetLastErrorCode() {
    return static_cast<std::uint32_t>(errno);
}

} // namespace Quorvex::Platform
