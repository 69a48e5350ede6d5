#include "foundation/Locale.h"

#include "foundation/platform/SystemLocale.h"

#include <string_view>

namespace Quorvex {

namespace {
// Without a lock: written once before any other thread starts.
Locale::EnumLanguage storedLanguage = Locale::EnumLanguage::Automatic;
} // namespace

Locale::EnumLanguage GetLanguage() {
    if (storedLanguage != Locale::EnumLanguage::Automatic)
        return storedLanguage;
    // Not stored: a user who changes the language of the system sees it in the texts that are built from then on.
    const String name = Platform::GetSystemLocaleName().ToANSI();
    return name.ToStdString().starts_with("German") ? Locale::EnumLanguage::German : Locale::EnumLanguage::English;
}

void SetLanguage(Locale::EnumLanguage language) {
    storedLanguage = language;
}

} // namespace Quorvex
