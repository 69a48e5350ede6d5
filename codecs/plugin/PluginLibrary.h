#pragma once

#include "codecs/plugin/ComObject.h"
#include "foundation/Exception.h"
#include "foundation/platform/DynamicLibrary.h"

#include <new>

namespace ET::Img::Plugin {

/// Calls a function of a plug-in. Whatever it raises becomes Exception with empty text, but for memory that has run
/// out; so does a result that is no success.
template <class Action>
void Call(const Action& action) {
    Result result = VarnolitePlugin::Failure;
    try {
        result = action();
    } catch (const std::bad_alloc&) {
        throw;
    } catch (...) {
        // Of whatever type: all callers count on the program's own exceptions.
    }
    if (result != VarnolitePlugin::Success)
        throw Quorvex::Exception();
}

/// The library of a plug-in with the object that makes its decoders. Any thread.
class PluginLibrary {
public:
    /// Loads the library with this full path. Raises Exception where it cannot be loaded, with what the system says;
    /// where it does not export "DllGetClassObject", with this name in the text; and with empty text where that fails.
    explicit PluginLibrary(const Quorvex::String& path);

    const Quorvex::String& GetPath() const { return m_path; }
    /// A new decoder. Raises Exception with empty text where the plug-in makes none.
    ComPointer<VarnolitePlugin::IDecoder> CreateDecoder() const;

private:
    Quorvex::String m_path;
    // The object's code is in the library, which goes last.
    Quorvex::Platform::DynamicLibrary m_library;
    ComPointer<VarnolitePlugin::IClassFactory> m_classFactory;
};

} // namespace ET::Img::Plugin
