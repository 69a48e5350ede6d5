#pragma once

#include "foundation/String.h"

namespace Quorvex::Platform {

/// Lets a 32-bit program on a 64-bit system see the files of the system's folder as they are, for the time of a scope
/// and for its thread alone. It works on paths of the drive that holds the system; on other paths, and on systems
/// without redirection, it does nothing.
class Wow64RedirectionGuard {
public:
    explicit Wow64RedirectionGuard(const String& path);
    Wow64RedirectionGuard(const Wow64RedirectionGuard&) = delete;
    Wow64RedirectionGuard& operator=(const Wow64RedirectionGuard&) = delete;
    ~Wow64RedirectionGuard();

    bool IsActive() const { return m_isActive; }

private:
    void* m_former = nullptr;
    bool m_isActive = false;
};

/// The upper-case drive letter of "C:\..." or "\\?\C:\...", or 0 where the path names none.
char16_t DriveLetterOf(const String& path);

} // namespace Quorvex::Platform
