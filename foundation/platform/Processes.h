#pragma once

#include <cstdint>

namespace Quorvex::Platform {

/// The numbers by which the system's own tools name this process and the calling thread.
std::uint32_t GetThisProcessId();
std::uint32_t GetThisThreadId();

} // namespace Quorvex::Platform
