#include "foundation/platform/DynamicLibrary.h"

#include "foundation/Exception.h"
#include "foundation/platform/posix/NativeText.h"

#include <dlfcn.h>

namespace Quorvex::Platform {

namespace {

void* Load(const std::string& path) {
    if (!path.starts_with('/'))
        throw Exception("dlopen failed, no full path");
    // All that is missing is to be missed now, and no name of one library serves another.
    void* const handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr)
        throw Exception(TextView(dlerror()));
    return handle;
}

} // namespace

DynamicLibrary::DynamicLibrary(const String& path) : m_handle(Load(NativeFromWide(path))) {}

DynamicLibrary::~DynamicLibrary() {
    dlclose(m_handle);
}

DynamicLibrary::Function DynamicLibrary::Find(const char* name) const {
    return reinterpret_cast<Function>(dlsym(m_handle, name));
}

const char* DynamicLibrary::GetFileSuffix() {
    return ".so";
}

} // namespace Quorvex::Platform
