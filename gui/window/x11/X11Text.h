#pragma once

#include "foundation/String.h"

#include <string>

namespace Quorvex::GUI {

/// A text as UTF-8 proper: surrogate pairs become one character, a surrogate alone becomes U+FFFD. Window managers
/// reject anything else.
std::string ToUtf8(const String& text);
/// The same in Latin-1 for those that know no other, with "?" for what it does not hold.
std::string ToLatin1(const String& text);

} // namespace Quorvex::GUI
