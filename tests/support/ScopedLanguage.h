#pragma once

#include "foundation/Locale.h"

namespace Quorvex::Test {

/// Speaks one language for the time of a scope; the system's own afterwards.
class ScopedLanguage {
public:
    explicit ScopedLanguage(Locale::EnumLanguage language) { SetLanguage(language); }
    ScopedLanguage(const ScopedLanguage&) = delete;
    ScopedLanguage& operator=(const ScopedLanguage&) = delete;
    ~ScopedLanguage() { SetLanguage(Locale::EnumLanguage::Automatic); }
};

} // namespace Quorvex::Test
