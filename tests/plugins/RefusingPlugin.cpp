// A library that has the right function, which says that it has no such class.

#include "codecs/plugin/VarnolitePluginSkeleton.h"

extern "C" VARNOLITE_EXPORT VarnolitePlugin::Result VARNOLITE_CALL DllGetClassObject(const VarnolitePlugin::Identifier&,
                                                                                     const VarnolitePlugin::Identifier&,
                                                                                     void** object) {
    *object = nullptr;
    return VarnolitePlugin::ClassNotAvailable;
}
