#pragma once

#include <cstdint>

/// What the system says about its version, asked anew on every call. See foundation/Version.h for the answers that the
/// program goes by.
namespace Quorvex::Platform {

/// 0 if the system cannot tell.
std::uint32_t QueryMajorVersion();
bool QueryIsVersionAtLeast(std::uint32_t major, std::uint32_t minor, std::uint32_t servicePack);

} // namespace Quorvex::Platform
