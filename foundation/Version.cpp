#include "foundation/Version.h"

#include "foundation/platform/SystemVersion.h"

#include <array>
#include <string_view>

namespace Quorvex {

namespace {

// Set by tests alone, and only while they are the one thread.
const SystemVersion* pretended = nullptr;

constexpr char TwoDigits(int value, int place) {
    return static_cast<char>('0' + (place == 0 ? value / 10 : value % 10));
}

constexpr int MonthOf(std::string_view name) {
    constexpr std::string_view names = "JanFebMarAprMayJunJulAugSepOctNovDec";
    return static_cast<int>(names.find(name) / 3) + 1;
}

/// From the compiler's "Jan  6 2017" and "09:05:00".
constexpr std::array<char, 19> IsoTime(std::string_view date, std::string_view time) {
    std::array<char, 19> iso{};
    std::size_t next = 0;
    const auto append = [&](std::string_view text) {
        for (const char unit : text)
            iso[next++] = unit;
    };
    const int month = MonthOf(date.substr(0, 3));
    append(date.substr(7, 4));
    append("-");
    iso[next++] = TwoDigits(month, 0);
    iso[next++] = TwoDigits(month, 1);
    append("-");
    iso[next++] = date[4] == ' ' ? '0' : date[4];
    iso[next++] = date[5];
    append("T");
    append(time);
    return iso;
}

static_assert(IsoTime("Jan  6 2017", "09:05:00") == std::array<char, 19>{'2', '0', '1', '7', '-', '0', '1', '-', '0',
                                                                         '6', 'T', '0', '9', ':', '0', '5', ':', '0',
                                                                         '0'});

// While compiling, so that the text costs nothing at start and a date in another form fails to compile.
constexpr std::array<char, 19> buildTime = IsoTime(__DATE__, __TIME__);

} // namespace

TextView GetBuildTime() {
    return TextView(buildTime.data(), static_cast<std::uint32_t>(buildTime.size()), Encoding::Windows1252);
}

bool IsUnicodeSystem() {
    constexpr std::uint32_t firstWideMajor = 5;
    if (pretended != nullptr)
        return pretended->major >= firstWideMajor;
    // Asked once: the answer decides about every call of the system, and must not change between two of them.
    static const std::uint32_t major = Platform::QueryMajorVersion();
    return major >= firstWideMajor;
}

bool IsVersionAtLeast(std::uint32_t major, std::uint32_t minor, std::uint32_t servicePack) {
    if (pretended != nullptr)
        return *pretended >= SystemVersion{major, minor, servicePack};
    return Platform::QueryIsVersionAtLeast(major, minor, servicePack);
}

bool IsVistaOrLater() {
    if (pretended != nullptr)
        return IsVersionAtLeast(6, 0, 0);
    static const bool isVistaOrLater = IsVersionAtLeast(6, 0, 0);
    return isVistaOrLater;
}

ScopedSystemVersion::ScopedSystemVersion(SystemVersion version) : m_version(version), m_outer(pretended) {
    pretended = &m_version;
}

ScopedSystemVersion::~ScopedSystemVersion() {
    pretended = m_outer;
}

} // namespace Quorvex
