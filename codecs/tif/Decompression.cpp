#include "codecs/tif/Decompression.h"

#include "codecs/lzw/TiffLzw.h"
#include "codecs/tif/Ccitt.h"
#include "codecs/tif/JpegDecompression.h"
#include "codecs/tif/PackBits.h"
#include "codecs/tif/Tags.h"
#include "codecs/tif/YCbCrBlocks.h"
#include "foundation/Exception.h"

#include <array>
#include <cstring>
#include <limits>
#include <new>

namespace ET::Img::Tif {

namespace {

class StoredBytes final : public Decompression {
public:
    Outcome Decode(std::span<const std::uint8_t> source, const TileShape& shape, TileBuffer& target) const override {
        if (source.size() < shape.Bytes())
            throw Quorvex::Exception();
        std::memcpy(target.Take(shape.Bytes()), source.data(), static_cast<std::size_t>(shape.Bytes()));
        return Outcome::Whole;
    }
    std::uint64_t LargestSize(std::uint64_t sourceSize, const TileShape&) const override { return sourceSize; }
};

class PackedBits final : public Decompression {
public:
    Outcome Decode(std::span<const std::uint8_t> source, const TileShape& shape, TileBuffer& target) const override {
        DecodePackBits(source.data(), source.size(), target.Take(shape.Bytes()),
                       static_cast<std::size_t>(shape.Bytes()));
        return Outcome::Whole;
    }
    /// Two bytes make up to 128.
    std::uint64_t LargestSize(std::uint64_t sourceSize, const TileShape&) const override { return 64 * sourceSize; }
};

class LzwCodes final : public Decompression {
public:
    Outcome Decode(std::span<const std::uint8_t> source, const TileShape& shape, TileBuffer& target) const override {
        if (shape.Bytes() > std::numeric_limits<std::uint32_t>::max())
            throw Quorvex::Exception();
        DecodeTiffLzw(source.data(), source.size(), target.Take(shape.Bytes()),
                      static_cast<std::size_t>(shape.Bytes()));
        return Outcome::Whole;
    }
    /// A code of nine bits or more stands for less than 4096 bytes.
    std::uint64_t LargestSize(std::uint64_t sourceSize, const TileShape&) const override { return 4096 * sourceSize; }
};

/// Black is 1. A row that is damaged is no reason to lose the page: the next one begins anew.
class CcittRows final : public Decompression {
public:
    CcittRows(const Directory& directory, const Layout& layout) {
        m_parameters.t4Options = directory.Integer(Tag::T4Options).value_or(0);
        m_parameters.isFillOrderReversed = layout.isFillReversed;
        m_parameters.isModifiedHuffman = layout.compression == Compression::ModifiedHuffman;
    }

    Outcome Decode(std::span<const std::uint8_t> source, const TileShape& shape, TileBuffer& target) const override {
        CcittParameters parameters = m_parameters;
        parameters.width = shape.columns;
        parameters.rows = shape.rows;
        const auto size = static_cast<std::size_t>(shape.Bytes());
        std::uint8_t* const rows = target.Take(shape.Bytes());
        std::memset(rows, 0, size);
        try {
            DecodeCcitt(source.data(), source.size(), rows, size, parameters);
        } catch (const Quorvex::Exception&) {
            return Outcome::Damaged;
        }
        return Outcome::Whole;
    }
    /// A row takes a bit at least.
    std::uint64_t LargestSize(std::uint64_t sourceSize, const TileShape& shape) const override {
        return 8 * sourceSize * shape.rowBytes;
    }

private:
    CcittParameters m_parameters;
};

/// Bytes whose bits lie the other way round, for schemes that know one way alone.
class ReversedBits final : public Decompression {
public:
    explicit ReversedBits(std::unique_ptr<const Decompression> inner) : m_inner(std::move(inner)) {}

    Outcome Decode(std::span<const std::uint8_t> source, const TileShape& shape, TileBuffer& target) const override {
        static constexpr std::array<std::uint8_t, 256> reversed = [] {
            std::array<std::uint8_t, 256> made{};
            for (std::size_t byte = 0; byte < 256; ++byte)
                for (unsigned bit = 0; bit < 8; ++bit)
                    made[byte] = static_cast<std::uint8_t>(made[byte] | (byte >> bit & 1) << (7 - bit));
            return made;
        }();
        std::vector<std::uint8_t> bytes(source.begin(), source.end());
        for (std::uint8_t& byte : bytes)
            byte = reversed[byte];
        return m_inner->Decode(bytes, shape, target);
    }
    std::uint64_t LargestSize(std::uint64_t sourceSize, const TileShape& shape) const override {
        return m_inner->LargestSize(sourceSize, shape);
    }

private:
    std::unique_ptr<const Decompression> m_inner;
};

[[noreturn]] void Refuse(std::uint32_t compression) {
    switch (compression) {
    case Compression::AdobeDeflate:
    case Compression::Deflate:
        throw Quorvex::Exception("Deflate compression scheme is not supported");
    case Compression::Thunderscan:
        throw Quorvex::Exception("Thunderscan compression scheme is not supported");
    case Compression::SgiLog:
        throw Quorvex::Exception("SGI Log Luminance RLE compression scheme is not supported");
    case Compression::SgiLog24:
        throw Quorvex::Exception("SGI Log 24-bit packed compression scheme is not supported");
    default:
        throw Quorvex::Exception("compression scheme is not supported");
    }
}

std::unique_ptr<const Decompression> InFillOrder(const Layout& layout, std::unique_ptr<const Decompression> made) {
    if (layout.isFillReversed)
        return std::make_unique<ReversedBits>(std::move(made));
    return made;
}

std::unique_ptr<const Decompression> MakeForScheme(const Directory& directory, const Layout& layout,
                                                   bool isInterchange) {
    switch (layout.compression) {
    case Compression::None:
        return InFillOrder(layout, std::make_unique<StoredBytes>());
    case Compression::ModifiedHuffman:
    case Compression::Group3:
        return std::make_unique<CcittRows>(directory, layout);
    case Compression::Lzw:
        return InFillOrder(layout, std::make_unique<LzwCodes>());
    case Compression::PackBits:
        return InFillOrder(layout, std::make_unique<PackedBits>());
    case Compression::OldJpeg:
    case Compression::Jpeg:
        return MakeJpegDecompression(directory, layout, isInterchange);
    default:
        Refuse(layout.compression);
    }
}

// Densities of light over a wide range, which the schemes of their makers alone compress, and variants of CIE L*a*b*
// would show false colours.
bool IsUnknownColorSpace(std::uint32_t photometric) {
    constexpr std::uint32_t iccLab = 9, ituLab = 10, logL = 32844, logLuv = 32845;
    return photometric == iccLab || photometric == ituLab || photometric == logL || photometric == logLuv;
}

void CheckYCbCr(const Layout& layout) {
    if (layout.isPlanar)
        throw Quorvex::Exception("YCbCr with PlanarConfiguartion==2 is not supported");
    if (layout.bits != 8)
        throw Quorvex::Exception("YCbCr with BitsPerSample!=8 is not supported");
    if (layout.samples != 3)
        throw Quorvex::Exception("YCbCr with SamplesPerPixel!=3 is not supported");
}

} // namespace

std::uint8_t* TileBuffer::Take(std::uint64_t size) {
    if (size > m_size) {
        if (size > std::numeric_limits<std::ptrdiff_t>::max())
            throw std::bad_alloc();
        m_size = 0;
        m_bytes.reset();
        m_bytes.reset(new std::uint8_t[static_cast<std::size_t>(size)]);
        m_size = size;
    }
    return m_bytes.get();
}

bool MakesPlainBytes(const Layout& layout) {
    return layout.IsJpeg() || layout.photometric == Photometric::YCbCr;
}

std::unique_ptr<const Decompression> MakeDecompression(const Directory& directory, const Layout& layout,
                                                       bool isInterchange) {
    std::unique_ptr<const Decompression> made = MakeForScheme(directory, layout, isInterchange);
    if (IsUnknownColorSpace(layout.photometric))
        throw Quorvex::Exception();
    if (layout.photometric != Photometric::YCbCr)
        return made;
    CheckYCbCr(layout);
    return layout.IsJpeg() ? std::move(made) : MakeYCbCrBlocks(std::move(made), layout);
}

} // namespace ET::Img::Tif
