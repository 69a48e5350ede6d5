#pragma once

#include "codecs/CodecFactory.h"
#include "codecs/Decoder.h"
#include "codecs/gif/Frame.h"

namespace ET::Img {

/// The worker behind a GIFDecoder.
class GIFDecoderImpl final : public ImageFile::ImplBase {
public:
    explicit GIFDecoderImpl(SharedPtr<Quorvex::Stream> stream) : m_stream(std::move(stream)) {}

    /// Walks the whole file unless that has been done. Raises as Load does.
    std::uint32_t GetCount() const override;
    SharedPtr<ImageBase> Load(const SharedPtr<ImageBase>& target, std::uint32_t index) override;

private:
    SharedPtr<Quorvex::Stream> m_stream;
    // Of a file without a frame, 0 as of one that was not walked: it is walked again.
    mutable std::uint32_t m_count = 0;
};

/// The frames of a GIF file as images of their own: where a frame lies on the screen, how long it shows, and what of it
/// is transparent is left out. All images are made in the size of the last frame; one of another size fills such an
/// image as its own indexes come. A file without a global colour table is refused. Delivers opaque 8-bit BGRA. Holds
/// the stream as long as it lives.
class GIFDecoder final : public Decoder<GIFDecoderImpl> {
public:
    explicit GIFDecoder(SharedPtr<Quorvex::Stream> stream)
        : Decoder(std::make_unique<GIFDecoderImpl>(std::move(stream))) {}
};

class GIFDecoderFactory final : public DecoderFactory<GIFDecoder, GIFDecoderFactory> {
public:
    static constexpr const char16_t* filePattern = u"*.gif";
    static constexpr const char16_t* germanText = u"GIF-Dateien (*.gif)";
    static constexpr const char16_t* englishText = u"GIF files (*.gif)";
};

} // namespace ET::Img
