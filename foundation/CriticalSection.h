#pragma once

#include <mutex>

namespace Quorvex::PAL::Threading {

/// A section of code that one thread at a time may be in; a thread that is in it may enter again.
class CriticalSection {
public:
    void Enter() { m_mutex.lock(); }
    void Leave() noexcept { m_mutex.unlock(); }

private:
    std::recursive_mutex m_mutex;
};

/// Enters a section for the time of a scope. A null section is none: nothing is entered and nothing left.
class CriticalSectionLock {
public:
    explicit CriticalSectionLock(CriticalSection* section) : m_section(section) {
        if (m_section != nullptr)
            m_section->Enter();
    }
    CriticalSectionLock(const CriticalSectionLock&) = delete;
    CriticalSectionLock& operator=(const CriticalSectionLock&) = delete;
    ~CriticalSectionLock() {
        if (m_section != nullptr)
            m_section->Leave();
    }

private:
    CriticalSection* m_section;
};

} // namespace Quorvex::PAL::Threading
