#include "codecs/plugin/PluginLibrary.h"

namespace ET::Img::Plugin {

namespace {

using VarnolitePlugin::IClassFactory;
using VarnolitePlugin::IDecoder;

/// An object that a plug-in hands over with its reference.
template <class Interface, class Action>
ComPointer<Interface> Receive(const Action& action) {
    void* object = nullptr;
    Call([&] { return action(&object); });
    if (object == nullptr)
        throw Quorvex::Exception();
    return ComPointer<Interface>(static_cast<Interface*>(object));
}

ComPointer<IClassFactory> GetClassFactory(const Quorvex::Platform::DynamicLibrary& library) {
    constexpr const char* name = "DllGetClassObject";
    const auto getClassObject = reinterpret_cast<VarnolitePlugin::GetClassObject>(library.Find(name));
    if (getClassObject == nullptr)
        throw Quorvex::Exception(Quorvex::String("no ") + name);
    return Receive<IClassFactory>(
        [&](void** object) { return getClassObject(VarnolitePlugin::DecoderClass, IClassFactory::Id, object); });
}

} // namespace

PluginLibrary::PluginLibrary(const Quorvex::String& path)
    : m_path(path), m_library(path), m_classFactory(GetClassFactory(m_library)) {}

ComPointer<IDecoder> PluginLibrary::CreateDecoder() const {
    return Receive<IDecoder>(
        [&](void** object) { return m_classFactory->CreateInstance(nullptr, IDecoder::Id, object); });
}

} // namespace ET::Img::Plugin
