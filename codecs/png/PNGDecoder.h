#pragma once

#include "codecs/CodecFactory.h"
#include "codecs/Decoder.h"

namespace ET::Img {

/// The worker behind a PNGDecoder. A file holds one image; every index gives that one.
class PNGDecoderImpl final : public ImageFile::ImplBase {
public:
    explicit PNGDecoderImpl(SharedPtr<Quorvex::Stream> stream) : m_stream(std::move(stream)) {}

    SharedPtr<ImageBase> Load(const SharedPtr<ImageBase>& target, std::uint32_t index) override;

private:
    SharedPtr<Quorvex::Stream> m_stream;
};

/// PNG files of every colour type and depth, interlaced or not. Delivers BGRA of 8 bits, and of 16 where the file has
/// them. A file with any damage to its pixels fails as a whole. Holds the stream as long as it lives.
class PNGDecoder final : public Decoder<PNGDecoderImpl> {
public:
    explicit PNGDecoder(SharedPtr<Quorvex::Stream> stream)
        : Decoder(std::make_unique<PNGDecoderImpl>(std::move(stream))) {}
};

class PNGDecoderFactory final : public DecoderFactory<PNGDecoder, PNGDecoderFactory> {
public:
    static constexpr const char16_t* filePattern = u"*.png";
    static constexpr const char16_t* germanText = u"PNG-Dateien (*.png)";
    static constexpr const char16_t* englishText = u"PNG files (*.png)";
};

} // namespace ET::Img
