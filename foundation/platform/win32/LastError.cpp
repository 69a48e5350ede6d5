#include "foundation/platform/LastError.h"

#include <windows.h>

namespace Quorvex::Platform {

std::uint32_t GetLastErrorCode() {
    return GetLastError();
}

} // namespace Quorvex::Platform
