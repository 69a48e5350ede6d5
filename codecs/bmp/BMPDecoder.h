#pragma once

#include "codecs/CodecFactory.h"
#include "codecs/Decoder.h"

namespace ET::Img {

/// The worker behind a BMPDecoder. A bitmap holds one image; every index gives that one.
class BMPDecoderImpl final : public ImageFile::ImplBase {
public:
    explicit BMPDecoderImpl(SharedPtr<Quorvex::Stream> stream);
    ~BMPDecoderImpl() override;

    SharedPtr<ImageBase> Load(const SharedPtr<ImageBase>& target, std::uint32_t index) override;
    /// The headers that the last Load has read; null before the first.
    SharedPtr<Quorvex::CompositeOfProperties> GetProperties() const { return m_root; }

private:
    SharedPtr<Quorvex::Stream> m_stream;
    SharedPtr<Quorvex::CompositeOfProperties> m_root;
};

/// Windows and OS/2 bitmaps of all header generations, with or without a file header. Delivers 8-bit BGRA, and the
/// fields of the headers as properties. Holds the stream as long as it lives.
class BMPDecoder final : public Decoder<BMPDecoderImpl> {
public:
    explicit BMPDecoder(SharedPtr<Quorvex::Stream> stream);
    SharedPtr<Quorvex::CompositeOfProperties> GetProperties() const override { return CheckedImpl().GetProperties(); }
};

class BMPDecoderFactory final : public DecoderFactory<BMPDecoder, BMPDecoderFactory> {
public:
    static constexpr const char16_t* filePattern = u"*.bmp;*.dib;*.rl4;*.rl8;*.rle;*.vga";
    static constexpr const char16_t* germanText = u"BMP-Dateien (*.bmp;*.dib;*.rl4;*.rl8;*.rle;*.vga)";
    static constexpr const char16_t* englishText = u"BMP files (*.bmp;*.dib;*.rl4;*.rl8;*.rle;*.vga)";
};

} // namespace ET::Img
