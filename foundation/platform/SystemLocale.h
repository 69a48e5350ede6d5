#pragma once

#include "foundation/String.h"

namespace Quorvex::Platform {

/// The name of the system's locale, which begins with the English name of its language: "German_Germany.1252",
/// "English_United States.1252". Any other language may have any other beginning.
String GetSystemLocaleName();

} // namespace Quorvex::Platform
