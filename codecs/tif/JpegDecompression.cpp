#include "codecs/tif/JpegDecompression.h"

#include "codecs/jpg/JPGDecoder.h"
#include "codecs/tif/OldJpeg.h"
#include "codecs/tif/Tags.h"
#include "codecs/tif/YCbCrBlocks.h"
#include "data/Image.h"
#include "data/MemoryStream.h"
#include "foundation/Exception.h"

#include <limits>

namespace ET::Img::Tif {

namespace {

using Quorvex::Data::LockMode;
using Pixel = Quorvex::Data::ColorBGRA<std::uint8_t>;
using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t markerBytes = 2;

bool EndsWithEnd(std::span<const std::uint8_t> bytes) {
    return bytes.size() >= markerBytes && bytes[bytes.size() - 2] == 0xFF && bytes[bytes.size() - 1] == 0xD9;
}

/// The first of the two without its end, and the second without its start, as one file.
Bytes Joined(std::span<const std::uint8_t> tables, std::span<const std::uint8_t> image) {
    if (EndsWithEnd(tables))
        tables = tables.first(tables.size() - markerBytes);
    Bytes joined(tables.begin(), tables.end());
    if (StartsJpeg(image))
        image = image.subspan(markerBytes);
    joined.insert(joined.end(), image.begin(), image.end());
    return joined;
}

/// What the decoder of a tile makes of its components: they are converted where the file says YCbCr, and stay what
/// they are in all other cases.
std::uint16_t ConversionFor(const Layout& layout) {
    const bool isKnown = layout.photometric == Photometric::YCbCr || layout.photometric == Photometric::Cmyk;
    return static_cast<std::uint16_t>(isKnown ? layout.photometric : Photometric::Rgb);
}

/// A decoder that writes what a tile has room for.
class JpegTiles : public Decompression {
public:
    JpegTiles(const Directory& directory, const Layout& layout)
        : m_imagePixels(std::uint64_t(layout.width) * layout.height), m_samples(layout.SamplesInTile()),
          m_isGrey(m_samples == 1 && layout.photometric != Photometric::Rgb), m_conversion(ConversionFor(layout)),
          m_restartInterval(
              static_cast<std::uint16_t>(directory.Integer(Tag::JPEGRestartInterval).value_or(0) & 0xFFFF)) {
        const std::span<const std::uint8_t> tables = directory.Bytes(Tag::JPEGTables);
        m_tables.assign(tables.begin(), tables.end());
    }

    Outcome Decode(std::span<const std::uint8_t> source, const TileShape& shape, TileBuffer& target) const override {
        Bytes joined;
        if (!m_tables.empty()) {
            joined = Joined(m_tables, source);
            source = joined;
        }
        DecodeFile(source, shape, target);
        return Outcome::Whole;
    }

    /// Flat blocks take next to nothing; the size of the frame is what is checked.
    std::uint64_t LargestSize(std::uint64_t, const TileShape&) const override {
        return std::numeric_limits<std::uint64_t>::max();
    }

protected:
    void DecodeFile(std::span<const std::uint8_t> file, const TileShape& shape, TileBuffer& target) const {
        JPGDecoder decoder(
            Quorvex::MakeShared<Quorvex::MemoryStream>(file.data(), static_cast<std::uint32_t>(file.size())));
        if (!m_isGrey)
            decoder.SetPhotometric(m_conversion);
        decoder.SetRestartInterval(m_restartInterval);
        decoder.SetWorkerCount(1);
        const ImageInfo info = decoder.GetInfo(0);
        CheckFrame(info, shape);
        const SharedPtr<ImageBase> image = Quorvex::MakeShared<Quorvex::Data::Image<Pixel>>();
        image->Allocate(info.Width, info.Height, info.AllocatedWidth, info.AllocatedHeight);
        decoder.Load(image, 0);
        if (decoder.IsIncomplete())
            throw Quorvex::Exception("damaged JPEG data");
        CopyRows(*image, shape, target.Take(shape.Bytes()));
        // The decoder shows samples of lossless frames as they are.
        if (m_conversion == Photometric::YCbCr && IsLosslessJpeg(file))
            ConvertRows(shape, target.Take(shape.Bytes()));
    }

private:
    /// The frame covers what is seen of the tile. It may be larger than that, as that of a tile at the border is, but
    /// all frames together not so much larger than the image that a few bytes cost minutes.
    void CheckFrame(const ImageInfo& info, const TileShape& shape) const {
        constexpr std::uint64_t tolerance = 1 << 26, tileFactor = 4, imageFactor = 16;
        const std::uint64_t pixels = std::uint64_t(info.Width) * info.Height;
        const std::uint64_t spare = (tolerance + imageFactor * m_imagePixels) / shape.tileCount;
        if (info.ColorType != Quorvex::Data::ColorTypeEnum::BGRAUInt8 || info.Width < shape.visibleColumns ||
            info.Height < shape.rows || pixels > spare + tileFactor * shape.columns * shape.rows)
            throw Quorvex::Exception("JPEG data of another size or depth");
    }

    void CopyRows(ImageBase& image, const TileShape& shape, std::uint8_t* target) const {
        const auto lock = image.LockBGRAUInt8(LockMode::ReadWrite);
        const std::uint32_t samples = m_samples;
        for (std::uint32_t y = 0; y < shape.rows; ++y, target += shape.rowBytes) {
            const Pixel* const row = lock.Row(y);
            std::uint8_t* to = target;
            for (std::uint32_t x = 0; x < shape.visibleColumns; ++x, to += samples) {
                to[0] = row[x].red;
                if (samples >= 3) {
                    to[1] = row[x].green;
                    to[2] = row[x].blue;
                }
                if (samples == 4)
                    to[3] = row[x].alpha;
            }
        }
    }

    static void ConvertRows(const TileShape& shape, std::uint8_t* target) {
        for (std::uint32_t y = 0; y < shape.rows; ++y, target += shape.rowBytes)
            for (std::uint8_t* rgb = target; rgb != target + std::size_t{3} * shape.visibleColumns; rgb += 3)
                ConvertYCbCr(rgb[0], rgb[1], rgb[2], rgb);
    }

    std::uint64_t m_imagePixels;
    std::uint32_t m_samples;
    bool m_isGrey;
    std::uint16_t m_conversion;
    std::uint16_t m_restartInterval;
    Bytes m_tables;
};

/// Tiles that hold entropy-coded data alone get the headers that the tags tell of.
class OldJpegTiles final : public JpegTiles {
public:
    OldJpegTiles(const Directory& directory, const Layout& layout)
        : JpegTiles(directory, layout), m_headers(directory, layout) {}

    Outcome Decode(std::span<const std::uint8_t> source, const TileShape& shape, TileBuffer& target) const override {
        if (StartsJpeg(source))
            return JpegTiles::Decode(source, shape, target);
        DecodeFile(m_headers.FileOf(source, shape.columns, shape.rows, shape.plane), shape, target);
        return Outcome::Whole;
    }

private:
    OldJpegHeaders m_headers;
};

} // namespace

std::unique_ptr<const Decompression> MakeJpegDecompression(const Directory& directory, const Layout& layout,
                                                           bool isInterchange) {
    if (layout.bits != 8)
        throw Quorvex::Exception("JPEG compression with BitsPerSample!=8 is not supported");
    const std::uint32_t samples = layout.SamplesInTile();
    if (layout.format != SampleFormat::Unsigned || samples == 2 || samples > 4)
        throw Quorvex::Exception();
    if (layout.compression == Compression::OldJpeg && !isInterchange)
        return std::make_unique<OldJpegTiles>(directory, layout);
    return std::make_unique<JpegTiles>(directory, layout);
}

} // namespace ET::Img::Tif
