#pragma once

#include "foundation/String.h"

namespace Quorvex::Platform {

/// A library of code that the program does not need to run, loaded from its file. What was taken from it may be used as
/// long as this lives. Any thread.
class DynamicLibrary {
public:
    using Function = void (*)();

    /// Loads the file with this full path; a shorter one is refused, so that no search decides which file it is. Raises
    /// Exception with what the system says about the failure, and reports nothing.
    explicit DynamicLibrary(const String& path);
    DynamicLibrary(const DynamicLibrary&) = delete;
    DynamicLibrary& operator=(const DynamicLibrary&) = delete;
    ~DynamicLibrary();

    /// Null where it has none of that name. The caller answers for its type.
    Function Find(const char* name) const;

    /// What file names of libraries end in.
    static const char* GetFileSuffix();

private:
    void* m_handle;
};

} // namespace Quorvex::Platform
