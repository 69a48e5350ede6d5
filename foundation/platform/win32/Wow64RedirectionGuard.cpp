#include "foundation/platform/win32/Wow64RedirectionGuard.h"

#include "foundation/Report.h"
#include "foundation/platform/win32/SystemCalls.h"

#include <string_view>

namespace Quorvex::Platform {

namespace {

// ASCII alone, since drives have no other letters; the C library would follow the locale.
char16_t UpperCaseLetter(char16_t unit) {
    const bool isLower = unit >= u'a' && unit <= u'z';
    const auto upper = static_cast<char16_t>(isLower ? unit - u'a' + u'A' : unit);
    return upper >= u'A' && upper <= u'Z' ? upper : u'\0';
}

/// 0 where the system cannot tell.
char16_t SystemDriveLetter(KernelCalls& kernel) {
    // Asked once: the drive of the system does not change under a running program.
    if (!kernel.systemDrive) {
        wchar_t folder[MAX_PATH + 1] = {};
        const bool isKnown =
            kernel.getSystemWindowsDirectoryW != nullptr && kernel.getSystemWindowsDirectoryW(folder, MAX_PATH) != 0;
        kernel.systemDrive = isKnown ? UpperCaseLetter(static_cast<char16_t>(folder[0])) : u'\0';
    }
    return *kernel.systemDrive;
}

} // namespace

char16_t DriveLetterOf(const String& path) {
    const String wide = path.ToWide();
    std::u16string_view units(wide.Wide(), wide.length());
    // The prefix that lifts the length limit of paths.
    if (units.starts_with(u"\\\\?\\"))
        units.remove_prefix(4);
    return units.size() >= 2 && units[1] == u':' ? UpperCaseLetter(units[0]) : u'\0';
}

Wow64RedirectionGuard::Wow64RedirectionGuard(const String& path) {
    KernelCalls& kernel = GetKernelCalls();
    if (kernel.wow64DisableWow64FsRedirection == nullptr || kernel.wow64RevertWow64FsRedirection == nullptr)
        return;
    const char16_t drive = DriveLetterOf(path);
    // A failure is no event: a 64-bit program and a 32-bit system have nothing to switch off.
    if (drive != u'\0' && drive == SystemDriveLetter(kernel))
        m_isActive = kernel.wow64DisableWow64FsRedirection(&m_former) != FALSE;
}

Wow64RedirectionGuard::~Wow64RedirectionGuard() {
    if (m_isActive && !GetKernelCalls().wow64RevertWow64FsRedirection(m_former))
        ReportFailure(__LINE__, "Wow64RevertWow64FsRedirection");
}

} // namespace Quorvex::Platform
