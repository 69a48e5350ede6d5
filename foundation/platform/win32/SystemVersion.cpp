#include "foundation/platform/SystemVersion.h"

#include "foundation/Version.h"
#include "foundation/platform/win32/SystemCalls.h"

namespace Quorvex::Platform {

namespace {

constexpr DWORD comparedFields = VER_MAJORVERSION | VER_MINORVERSION | VER_SERVICEPACKMAJOR;

ULONGLONG AtLeastMask(const KernelCalls& kernel) {
    ULONGLONG mask = 0;
    for (const DWORD field : {VER_MAJORVERSION, VER_MINORVERSION, VER_SERVICEPACKMAJOR})
        mask = kernel.verSetConditionMask(mask, field, VER_GREATER_EQUAL);
    return mask;
}

template <class Record>
Record RecordOf(const SystemVersion& wanted) {
    Record record{};
    record.dwOSVersionInfoSize = sizeof record;
    record.dwMajorVersion = wanted.major;
    record.dwMinorVersion = wanted.minor;
    record.wServicePackMajor = static_cast<WORD>(wanted.servicePack);
    return record;
}

static_assert(sizeof(OSVERSIONINFOEXW) == 284);

/// The zero version if the system cannot tell. Systems before Windows NT 4 SP6 know the shorter record alone, which has
/// no number for the service pack.
SystemVersion VersionByRecord(const KernelCalls& kernel) {
    OSVERSIONINFOEXA full{};
    full.dwOSVersionInfoSize = sizeof full;
    if (kernel.getVersionExA(reinterpret_cast<OSVERSIONINFOA*>(&full)))
        return {full.dwMajorVersion, full.dwMinorVersion, full.wServicePackMajor};
    OSVERSIONINFOA brief{};
    brief.dwOSVersionInfoSize = sizeof brief;
    if (kernel.getVersionExA(&brief))
        return {brief.dwMajorVersion, brief.dwMinorVersion, 0};
    return {};
}

} // namespace

// The short record, which every system knows: this answer decides what else may be asked.
std::uint32_t QueryMajorVersion() {
    OSVERSIONINFOA brief{};
    brief.dwOSVersionInfoSize = sizeof brief;
    return GetKernelCalls().getVersionExA(&brief) ? brief.dwMajorVersion : 0;
}

// All three numbers together, in this order, as the system compares them.
bool QueryIsVersionAtLeast(std::uint32_t major, std::uint32_t minor, std::uint32_t servicePack) {
    const KernelCalls& kernel = GetKernelCalls();
    const SystemVersion wanted{major, minor, servicePack};
    // Preferred where it is there: how its versions compare is the system's own affair.
    if (kernel.verSetConditionMask != nullptr && kernel.verifyVersionInfoW != nullptr) {
        auto record = RecordOf<OSVERSIONINFOEXW>(wanted);
        return kernel.verifyVersionInfoW(&record, comparedFields, AtLeastMask(kernel)) != FALSE;
    }
    if (kernel.verSetConditionMask != nullptr && kernel.verifyVersionInfoA != nullptr) {
        auto record = RecordOf<OSVERSIONINFOEXA>(wanted);
        return kernel.verifyVersionInfoA(&record, comparedFields, AtLeastMask(kernel)) != FALSE;
    }
    return VersionByRecord(kernel) >= wanted;
}

} // namespace Quorvex::Platform
