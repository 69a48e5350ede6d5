#pragma once

#include "foundation/String.h"

#include <cstdint>

namespace Quorvex {

/// Folders of the user, by the shell's numbers.
enum class SpecialFolder : std::int32_t {
    Desktop = 0x00,
    RoamingData = 0x1A, ///< Settings.
    LocalData = 0x1C,   ///< What belongs to this machine, such as the log.
};

/// The path without a separator at its end. Where the system has no such folder, "GetSpecialFolder" is reported and
/// Exception raised.
String GetSpecialFolder(SpecialFolder folder);

/// The full path of the running program. Raises Exception with the name of the call that failed.
String GetModulePath();

} // namespace Quorvex
