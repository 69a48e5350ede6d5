#pragma once

#include <cstddef>

namespace Quorvex::Platform {

/// Tells the system that fresh memory will be filled from end to end, so that it may be given in large pages. Nothing
/// is touched and no content changes; without such pages nothing happens.
void ExpectToFill(void* memory, std::size_t bytes) noexcept;

} // namespace Quorvex::Platform
