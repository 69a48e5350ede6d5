#pragma once

#include "codecs/ImageInfo.h"
#include "codecs/tif/TiffDirectory.h"

namespace ET::Img::Tif {

/// What the bits of a sample are (TIFF 6.0, section 19).
enum class SampleFormat { Unsigned, Signed, Float };

/// What the samples of a pixel are, as the tag numbers it.
namespace Photometric {
enum : std::uint32_t { WhiteIsZero = 0, BlackIsZero = 1, Rgb = 2, Palette = 3, Cmyk = 5, YCbCr = 6, CieLab = 8 };
}

namespace Compression {
enum : std::uint32_t {
    None = 1,
    ModifiedHuffman = 2,
    Group3 = 3,
    Lzw = 5,
    OldJpeg = 6,
    Jpeg = 7,
    AdobeDeflate = 8,
    PackBits = 32773,
    Thunderscan = 32809,
    SgiLog = 34676,
    SgiLog24 = 34677,
    Deflate = 32946,
};
}

/// The part of a directory that says how samples lie in the file and what they become.
struct Layout {
    /// Raises Exception without text for what no image can be made of.
    explicit Layout(const Directory& directory);

    ByteOrder order;
    std::uint32_t width;
    std::uint32_t height;
    std::uint32_t bits;    ///< Per sample, 1 to 64.
    std::uint32_t samples; ///< Per pixel, 1 to 65535.
    SampleFormat format = SampleFormat::Unsigned;
    std::uint32_t compression;
    std::uint32_t predictor;    ///< 1 to 3; 1 where the scheme knows of no differences.
    bool isOldLossless = false; ///< Old JPEG with differences in place of coefficients.
    bool isFillReversed;        ///< The first bit of a byte is its lowest.
    bool isPlanar;              ///< Each sample lies in tiles of its own.
    std::uint32_t photometric;
    std::uint32_t colorSamples; ///< The first of them, which make the colour: 1, 3 or 4.
    bool isColor;               ///< The image is BGRA.
    std::optional<std::uint32_t> alphaSample;
    bool isPremultiplied = false;
    bool isAlphaTold = false;           ///< The file says that it is alpha; otherwise its place alone does.
    bool hasIgnoredSamples = false;     ///< There are samples that nothing is known of.
    std::uint32_t chromaHorizontal = 2; ///< Pixels that share their chrominance.
    std::uint32_t chromaVertical = 2;

    bool IsFax() const { return compression == Compression::ModifiedHuffman || compression == Compression::Group3; }
    bool IsJpeg() const { return compression == Compression::Jpeg || compression == Compression::OldJpeg; }
    /// Samples of a pixel that lie together.
    std::uint32_t SamplesInTile() const { return isPlanar ? 1 : samples; }
    /// Of a channel of the image: 8, 16, 32 or 64.
    std::uint32_t ChannelBits() const;
    ImageInfo GetImageInfo(const Directory& directory) const;

private:
    void ReadSamples(const Directory& directory);
    void ReadPhotometric(const Directory& directory);
    void ReadExtraSamples(const Directory& directory);
    void ReadChroma(const Directory& directory);
    void Check() const;
};

} // namespace ET::Img::Tif
