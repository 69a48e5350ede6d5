#pragma once

#include "codecs/Decoder.h"
#include "codecs/plugin/PluginLibrary.h"
#include "data/Stream.h"

namespace ET::Img {

/// The worker behind an IDecoderCOMAsCPPWrapper.
class IDecoderCOMAsCPPWrapperImpl final : public ImageFile::ImplBase {
public:
    /// Opens the stream with a new decoder of the plug-in. Raises Exception with empty text where it takes no such
    /// file.
    IDecoderCOMAsCPPWrapperImpl(SharedPtr<Plugin::PluginLibrary> library, SharedPtr<Quorvex::Stream> stream);

    std::uint32_t GetCount() const override;
    std::uint32_t GetDefaultIndex() const override;
    SharedPtr<ImageBase> Load(const SharedPtr<ImageBase>& target, std::uint32_t index) override;
    void SetLogger(SharedPtr<Quorvex::ILogger> logger) override;
    ImageInfo GetInfo(std::uint32_t index) override;

private:
    SharedPtr<Plugin::PluginLibrary> m_library;
    Plugin::ComPointer<VarnolitePlugin::IDecoder> m_decoder;
    SharedPtr<Quorvex::ILogger> m_logger;
};

/// A file that a plug-in decodes. Whatever the plug-in raises or answers becomes an image or an Exception. The smallest
/// and the largest sample of an image are what its limits stand for; they are logged.
class IDecoderCOMAsCPPWrapper final : public Decoder<IDecoderCOMAsCPPWrapperImpl> {
public:
    IDecoderCOMAsCPPWrapper(SharedPtr<Plugin::PluginLibrary> library, SharedPtr<Quorvex::Stream> stream)
        : Decoder(std::make_unique<IDecoderCOMAsCPPWrapperImpl>(std::move(library), std::move(stream))) {}

    ImageInfo GetInfo(std::uint32_t index) override { return CheckedImpl().GetInfo(index); }
};

} // namespace ET::Img
