// A library whose function raises what is no exception of the standard's.

#include "codecs/plugin/VarnolitePluginSkeleton.h"

extern "C" VARNOLITE_EXPORT VarnolitePlugin::Result VARNOLITE_CALL DllGetClassObject(const VarnolitePlugin::Identifier&,
                                                                                     const VarnolitePlugin::Identifier&,
                                                                                     void**) {
    throw 1;
}
