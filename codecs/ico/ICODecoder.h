#pragma once

#include "codecs/CodecFactory.h"
#include "codecs/Decoder.h"
#include "codecs/ico/IconDirectory.h"

namespace ET::Img {

/// The worker behind an ICODecoder.
class ICODecoderImpl final : public ImageFile::ImplBase {
public:
    /// Raises as Ico::ReadDirectory does.
    explicit ICODecoderImpl(SharedPtr<Quorvex::Stream> stream);

    std::uint32_t GetCount() const override { return static_cast<std::uint32_t>(m_entries.size()); }
    std::uint32_t GetDefaultIndex() const override { return m_defaultIndex; }
    SharedPtr<ImageBase> Load(const SharedPtr<ImageBase>& target, std::uint32_t index) override;

private:
    struct Bytes {
        std::unique_ptr<std::uint8_t[]> data;
        std::uint32_t size = 0;
    };

    std::uint32_t FindDefaultIndex() const;
    Bytes ReadEntry(std::uint32_t index) const;
    SharedPtr<ImageBase> Decode(ImageFile& decoder, const SharedPtr<ImageBase>& target);
    SharedPtr<ImageBase> DecodeBitmap(Bytes bytes, const SharedPtr<ImageBase>& target);

    SharedPtr<Quorvex::Stream> m_stream;
    std::vector<Ico::Entry> m_entries;
    std::uint32_t m_defaultIndex = 0;
};

/// Icon and cursor files of Windows: several images, each a PNG file or a bitmap with a mask of one bit a pixel. An
/// image that cannot be decoded fails alone. Holds the stream as long as it lives, and leaves its position as it was.
class ICODecoder final : public Decoder<ICODecoderImpl> {
public:
    explicit ICODecoder(SharedPtr<Quorvex::Stream> stream)
        : Decoder(std::make_unique<ICODecoderImpl>(std::move(stream))) {}
};

class ICODecoderFactory final : public DecoderFactory<ICODecoder, ICODecoderFactory> {
public:
    static constexpr const char16_t* filePattern = u"*.ico;*.cur";
    static constexpr const char16_t* germanText = u"ICO-Dateien (*.ico;*.cur)";
    static constexpr const char16_t* englishText = u"ICO files (*.ico;*.cur)";
};

} // namespace ET::Img
