#pragma once

#include <cstddef>
#include <cstdint>

namespace Quorvex {

namespace Locale {
/// The low byte indexes every two-language table.
enum class EnumLanguage : std::uint32_t { Automatic = 0, German = 0x44450000, English = 0x454E0001 };
} // namespace Locale

/// The process-wide language, resolved: never Automatic. Automatic follows the system's locale, which is asked on every
/// call. Written once before any worker thread starts.
Locale::EnumLanguage GetLanguage();
void SetLanguage(Locale::EnumLanguage language);

inline std::size_t LanguageIndex(Locale::EnumLanguage language) {
    return static_cast<std::uint32_t>(language) & 0xFF;
}

} // namespace Quorvex
