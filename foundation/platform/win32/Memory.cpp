#include "foundation/platform/Memory.h"

namespace Quorvex::Platform {

// Large pages of this system need a privilege that users do not have.
void ExpectToFill(void*, std::size_t) noexcept {}

} // namespace Quorvex::Platform
