#pragma once

#include <windows.h>

namespace Quorvex::Platform {

/// A library of the system that may be missing: then the handle is null, and every function in it is too.
class LoadableLibrary {
public:
    explicit LoadableLibrary(const char* name) : m_handle(LoadLibraryA(name)) {}
    LoadableLibrary(const LoadableLibrary&) = delete;
    LoadableLibrary& operator=(const LoadableLibrary&) = delete;
    ~LoadableLibrary() {
        if (m_handle != nullptr)
            FreeLibrary(m_handle);
    }

    FARPROC GetProcAddress(const char* name) const {
        return m_handle != nullptr ? ::GetProcAddress(m_handle, name) : nullptr;
    }

    /// Sets the pointer to the function of that name, or to null. The caller answers for its type.
    template <class Pointer>
    void Take(Pointer& function, const char* name) const {
        function = reinterpret_cast<Pointer>(reinterpret_cast<void (*)()>(GetProcAddress(name)));
    }

private:
    HMODULE m_handle;
};

} // namespace Quorvex::Platform
