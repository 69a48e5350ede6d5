#pragma once

#include "codecs/CodecFactory.h"
#include "codecs/plugin/PluginLibrary.h"

namespace ET::Img {

/// Makes the decoders of one plug-in. The library stays loaded as long as it or one of its decoders lives.
class IDecoderCOMAsCPPWrapperFactory final : public CodecFactory {
public:
    explicit IDecoderCOMAsCPPWrapperFactory(SharedPtr<Plugin::PluginLibrary> library) : m_library(std::move(library)) {}

    Quorvex::String GetFilePattern() const override;
    Quorvex::String GetFileTypeText() const override;
    SharedPtr<ImageFile> CreateDecoder(SharedPtr<Quorvex::Stream> stream) const override;

    const Quorvex::String& GetLibraryPath() const { return m_library->GetPath(); }

private:
    SharedPtr<Plugin::PluginLibrary> m_library;
};

/// Adds a factory for each library "Varnolite*" in the folder that is a plug-in, in the order of their names. One that
/// the registry has is not loaded again, and one that fails is reported by its name and left out. To be called during
/// start-up, while nobody else uses the registry.
void AddPlugins(CodecRegistry& registry, const Quorvex::String& folder);

/// The same with the folder of the running program.
void AddPluginsBesideProgram(CodecRegistry& registry);

} // namespace ET::Img
