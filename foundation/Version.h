#pragma once

#include "foundation/TextView.h"

#include <compare>
#include <cstdint>
#include <tuple>

namespace Quorvex {

/// The time at which the program was built, YYYY-MM-DDTHH:MM:SS. It is the program's version: newer is greater.
TextView GetBuildTime();

/// The one decision between the wide and the narrow form of a system call. Asks the system once.
bool IsUnicodeSystem();

bool IsVersionAtLeast(std::uint32_t major, std::uint32_t minor, std::uint32_t servicePack);
/// Version 6.0; asks the system once.
bool IsVistaOrLater();

struct SystemVersion {
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
    std::uint32_t servicePack = 0;

    bool operator>=(const SystemVersion& other) const {
        return std::tie(major, minor, servicePack) >= std::tie(other.major, other.minor, other.servicePack);
    }
};

/// While it lives, the functions above answer for the given version, so that a test on a current system walks the
/// branches of an old one. To be made and destroyed while no other thread runs.
class ScopedSystemVersion {
public:
    explicit ScopedSystemVersion(SystemVersion version);
    ScopedSystemVersion(const ScopedSystemVersion&) = delete;
    ScopedSystemVersion& operator=(const ScopedSystemVersion&) = delete;
    ~ScopedSystemVersion();

private:
    SystemVersion m_version;
    const SystemVersion* m_outer;
};

} // namespace Quorvex
