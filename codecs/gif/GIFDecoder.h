#pragma once

#include "codecs/CodecFactory.h"
#include "codecs/Decoder.h"
#include "codecs/gif/Frame.h"

#include <optional>

namespace ET::Img {

/// The worker behind a GIFDecoder.
class GIFDecoderImpl final : public ImageFile::ImplBase {
public:
    explicit GIFDecoderImpl(SharedPtr<Quorvex::Stream> stream) : m_stream(std::move(stream)) {}

    /// Walks the whole file unless that has been done, and then raises as a Load without a target does for damage.
    std::uint32_t GetCount() const override;
    SharedPtr<ImageBase> Load(const SharedPtr<ImageBase>& target, std::uint32_t index) override;

private:
    SharedPtr<Quorvex::Stream> m_stream;
    mutable std::optional<std::uint32_t> m_count; ///< Nothing before the file was walked.
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
