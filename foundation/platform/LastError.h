#pragma once

#include <cstdint>

namespace Quorvex::Platform {

/// The calling thread's code of the last failed system call.
std::uint32_t GetLastErrorCode();

} // namespace Quorvex::Platform
