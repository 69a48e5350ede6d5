// A library whose function claims success and gives no class factory.

#include "codecs/plugin/VarnolitePluginSkeleton.h"

extern "C" VARNOLITE_EXPORT VarnolitePlugin::Result VARNOLITE_CALL DllGetClassObject(const VarnolitePlugin::Identifier&,
                                                                                     const VarnolitePlugin::Identifier&,
                                                                                     void** object) {
    *object = nullptr;
    return VarnolitePlugin::Success;
}
