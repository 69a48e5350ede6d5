#pragma once

#include <cstdint>

namespace Quorvex::Platform {

/// The logical processors that this process may run on; at least 1.
std::uint32_t GetProcessorCount();

} // namespace Quorvex::Platform
