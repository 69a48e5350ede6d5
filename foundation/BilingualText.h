#pragma once

#include "foundation/Locale.h"
#include "foundation/String.h"

#include <array>

namespace Quorvex {

/// A text of the user interface in German and English, in this order.
using BilingualText = std::array<String, 2>;

/// The text for the present language.
inline const String& InCurrentLanguage(const BilingualText& text) {
    return text[LanguageIndex(GetLanguage())];
}

} // namespace Quorvex
