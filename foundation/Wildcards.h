#pragma once

#include "foundation/String.h"

namespace Quorvex {

/// Whether the whole name matches: "*" stands for any text, also none, and "?" for exactly one unit. Case counts. Takes
/// what String::ToWide takes.
bool MatchesWildcards(const String& name, const String& pattern);

} // namespace Quorvex
