#ifdef VARNOLITE_HAS_TIFF

#include "tests/codecs/LibtiffFile.h"

#include "tests/codecs/LibtiffMemory.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace LibtiffFile {

namespace {

std::uint32_t TileHeightOf(const Format& format) {
    return format.tileHeight != 0 ? format.tileHeight : format.tileSize;
}

void SetTags(TIFF* tiff, const Format& format) {
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, format.width);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, format.height);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, format.bits);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, format.samples);
    TIFFSetField(tiff, TIFFTAG_SAMPLEFORMAT, format.sampleFormat);
    const std::vector<std::uint16_t> extra(format.samples >= 3 ? format.samples - 3 : format.samples - 1,
                                           format.extraSample);
    if (format.extraSample != 0)
        TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, static_cast<int>(extra.size()), extra.data());
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, format.photometric);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, format.isPlanar ? PLANARCONFIG_SEPARATE : PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_FILLORDER, format.fillOrder);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, format.compression);
    if (format.predictor != 1)
        TIFFSetField(tiff, TIFFTAG_PREDICTOR, format.predictor);
    if (format.chroma.first != 0)
        TIFFSetField(tiff, TIFFTAG_YCBCRSUBSAMPLING, format.chroma.first, format.chroma.second);
    if (format.tileSize != 0) {
        TIFFSetField(tiff, TIFFTAG_TILEWIDTH, format.tileSize);
        TIFFSetField(tiff, TIFFTAG_TILELENGTH, TileHeightOf(format));
    } else {
        TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, format.rowsPerStrip);
    }
    for (const auto& [tag, value] : format.tags)
        TIFFSetField(tiff, tag, value);
}

/// Copies a rectangle of bits, whose columns are whole bytes or begin a row.
void CopyRows(const std::uint8_t* from, std::size_t fromStride, std::uint8_t* to, std::size_t toStride,
              std::size_t bytes, std::size_t rows) {
    for (std::size_t y = 0; y < rows; ++y)
        std::memcpy(to + y * toStride, from + y * fromStride, bytes);
}

/// Calls action(tile number, x, y, plane, place of the tile's first byte in all rows, bytes of a row, rows).
template <class Action>
void ForEachTile(TIFF* tiff, const Format& format, const Action& action) {
    const std::size_t planeSamples = format.isPlanar ? 1 : format.samples;
    const std::size_t rowBytes = (std::size_t(format.width) * planeSamples * format.bits + 7) / 8;
    const std::uint32_t size = format.tileSize, height = TileHeightOf(format);
    for (std::uint16_t plane = 0; plane < (format.isPlanar ? format.samples : 1); ++plane)
        for (std::uint32_t y = 0; y < format.height; y += height)
            for (std::uint32_t x = 0; x < format.width; x += size) {
                const std::size_t left = std::size_t(x) * planeSamples * format.bits / 8;
                const std::size_t tileRowBytes = static_cast<std::size_t>(TIFFTileRowSize(tiff));
                action(x, y, plane, (std::size_t(plane) * format.height + y) * rowBytes + left,
                       std::min(tileRowBytes, rowBytes - left), std::min(height, format.height - y), rowBytes,
                       tileRowBytes);
            }
}

} // namespace

Bytes Write(const Format& format, const Bytes& rows) {
    LibtiffMemory file;
    const Libtiff tiff = OpenLibtiff(file, format.isBigEndian ? "wb" : "wl");
    SetTags(tiff.get(), format);
    Bytes copy = rows;
    if (format.tileSize != 0) {
        ForEachTile(tiff.get(), format,
                    [&](std::uint32_t x, std::uint32_t y, std::uint16_t plane, std::size_t place, std::size_t bytes,
                        std::size_t count, std::size_t stride, std::size_t tileStride) {
                        Bytes tile(static_cast<std::size_t>(TIFFTileSize(tiff.get())), 0x55);
                        CopyRows(copy.data() + place, stride, tile.data(), tileStride, bytes, count);
                        if (TIFFWriteTile(tiff.get(), tile.data(), x, y, 0, plane) < 0)
                            throw std::runtime_error("libtiff cannot encode a tile");
                    });
    } else {
        const auto rowBytes = static_cast<std::size_t>(TIFFScanlineSize(tiff.get()));
        for (std::uint16_t plane = 0; plane < (format.isPlanar ? format.samples : 1); ++plane)
            for (std::uint32_t y = 0; y < format.height; ++y)
                if (TIFFWriteScanline(tiff.get(), copy.data() + (std::size_t(plane) * format.height + y) * rowBytes, y,
                                      plane) < 0)
                    throw std::runtime_error("libtiff cannot encode a row");
    }
    TIFFFlush(tiff.get());
    return file.bytes;
}

Bytes Read(const Bytes& bytes, std::uint32_t directory, Format& format) {
    LibtiffMemory file{bytes};
    const Libtiff tiff = OpenLibtiff(file, "r");
    if (!tiff || !TIFFSetDirectory(tiff.get(), static_cast<tdir_t>(directory)))
        return {};
    std::uint16_t planar = 1;
    TIFFGetField(tiff.get(), TIFFTAG_IMAGEWIDTH, &format.width);
    TIFFGetField(tiff.get(), TIFFTAG_IMAGELENGTH, &format.height);
    TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_BITSPERSAMPLE, &format.bits);
    TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_SAMPLESPERPIXEL, &format.samples);
    TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_SAMPLEFORMAT, &format.sampleFormat);
    TIFFGetField(tiff.get(), TIFFTAG_PHOTOMETRIC, &format.photometric);
    TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_PLANARCONFIG, &planar);
    TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_COMPRESSION, &format.compression);
    format.isBigEndian = TIFFIsBigEndian(tiff.get()) != 0;
    format.isPlanar = planar == PLANARCONFIG_SEPARATE && format.samples > 1;
    if (format.photometric == PHOTOMETRIC_YCBCR)
        return {};
    const std::size_t planes = format.isPlanar ? format.samples : 1;
    Bytes rows;
    bool isWhole = true;
    if (TIFFIsTiled(tiff.get())) {
        TIFFGetField(tiff.get(), TIFFTAG_TILEWIDTH, &format.tileSize);
        TIFFGetField(tiff.get(), TIFFTAG_TILELENGTH, &format.tileHeight);
        const std::size_t planeSamples = format.isPlanar ? 1 : format.samples;
        rows.resize(planes * format.height * ((std::size_t(format.width) * planeSamples * format.bits + 7) / 8));
        ForEachTile(tiff.get(), format,
                    [&](std::uint32_t x, std::uint32_t y, std::uint16_t plane, std::size_t place, std::size_t count,
                        std::size_t rowCount, std::size_t stride, std::size_t tileStride) {
                        Bytes tile(static_cast<std::size_t>(TIFFTileSize(tiff.get())));
                        isWhole = TIFFReadTile(tiff.get(), tile.data(), x, y, 0, plane) >= 0 && isWhole;
                        CopyRows(tile.data(), tileStride, rows.data() + place, stride, count, rowCount);
                    });
    } else {
        const auto rowBytes = static_cast<std::size_t>(TIFFScanlineSize(tiff.get()));
        rows.resize(planes * format.height * rowBytes);
        std::uint32_t rowsPerStrip = 0;
        TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_ROWSPERSTRIP, &rowsPerStrip);
        rowsPerStrip = std::min(rowsPerStrip, format.height);
        for (std::uint16_t plane = 0; plane < planes; ++plane)
            for (std::uint32_t y = 0; y < format.height && rowsPerStrip != 0; y += rowsPerStrip) {
                const auto size = static_cast<tmsize_t>(std::min(rowsPerStrip, format.height - y) * rowBytes);
                isWhole = TIFFReadEncodedStrip(tiff.get(), TIFFComputeStrip(tiff.get(), y, plane),
                                               rows.data() + (std::size_t(plane) * format.height + y) * rowBytes,
                                               size) == size &&
                          isWhole;
            }
    }
    return isWhole ? rows : Bytes();
}

std::uint64_t SampleOf(const Bytes& rows, const Format& format, std::size_t x, std::size_t y, std::size_t s) {
    const std::size_t together = format.isPlanar ? 1 : format.samples;
    const std::size_t rowBytes = (format.width * together * format.bits + 7) / 8;
    const std::size_t row = (format.isPlanar ? s * format.height : 0) + y;
    const std::size_t bit = row * rowBytes * 8 + (x * together + (format.isPlanar ? 0 : s)) * format.bits;
    if (8 % format.bits == 0)
        return rows[bit / 8] >> (8 - format.bits - bit % 8) & ((1u << format.bits) - 1);
    std::uint64_t value = 0;
    if (format.bits % 8 != 0) {
        for (std::size_t i = bit; i < bit + format.bits; ++i)
            value = value << 1 | (rows[i / 8] >> (7 - i % 8) & 1);
        return value;
    }
    const std::size_t bytes = format.bits / 8;
    const bool isReversed = bytes > 4 && bytes < 8 && format.isBigEndian;
    for (std::size_t i = 0; i < bytes; ++i)
        value |= std::uint64_t{rows[bit / 8 + i]} << 8 * (isReversed ? bytes - 1 - i : i);
    return value;
}

Bytes ReadColors(const Bytes& bytes, std::uint32_t directory) {
    LibtiffMemory file{bytes};
    const Libtiff tiff = OpenLibtiff(file, "r");
    std::uint32_t width = 0, height = 0;
    if (!tiff || !TIFFSetDirectory(tiff.get(), static_cast<tdir_t>(directory)) ||
        !TIFFGetField(tiff.get(), TIFFTAG_IMAGEWIDTH, &width) ||
        !TIFFGetField(tiff.get(), TIFFTAG_IMAGELENGTH, &height))
        return {};
    std::vector<std::uint32_t> raster(std::size_t(width) * height);
    if (!TIFFReadRGBAImageOriented(tiff.get(), width, height, raster.data(), ORIENTATION_TOPLEFT, 1))
        return {};
    Bytes colors;
    for (const std::uint32_t pixel : raster)
        for (unsigned shift = 0; shift < 32; shift += 8)
            colors.push_back(static_cast<std::uint8_t>(pixel >> shift));
    return colors;
}

} // namespace LibtiffFile

#endif
