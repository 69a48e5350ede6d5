#ifdef VARNOLITE_HAS_TIFF

#include "tests/codecs/LibtiffStrip.h"

#include "tests/codecs/LibtiffMemory.h"

#include <stdexcept>

namespace {

using Bytes = LibtiffStrip::Bytes;

using File = LibtiffMemory;

Libtiff Open(File& file, const char* mode) {
    Libtiff tiff = OpenLibtiff(file, mode);
    if (!tiff)
        throw std::runtime_error("libtiff refuses its own file");
    return tiff;
}

void SetTags(TIFF* tiff, const LibtiffStrip& strip) {
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, strip.width);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, strip.height);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, strip.bitsPerSample);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, strip.height);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, strip.bitsPerSample == 1 ? PHOTOMETRIC_MINISWHITE : PHOTOMETRIC_MINISBLACK);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, strip.compression);
    for (const auto& [tag, value] : strip.tags)
        TIFFSetField(tiff, tag, value);
}

} // namespace

Bytes LibtiffStrip::Encode(const Bytes& rows) const {
    File file;
    {
        const Libtiff tiff = Open(file, "w");
        SetTags(tiff.get(), *this);
        Bytes copy = rows;
        if (TIFFWriteEncodedStrip(tiff.get(), 0, copy.data(), static_cast<tmsize_t>(copy.size())) < 0)
            throw std::runtime_error("libtiff cannot encode");
    }
    const Libtiff tiff = Open(file, "r");
    Bytes strip(TIFFRawStripSize(tiff.get(), 0));
    TIFFReadRawStrip(tiff.get(), 0, strip.data(), static_cast<tmsize_t>(strip.size()));
    return strip;
}

LibtiffStrip::Decoded LibtiffStrip::Decode(const Bytes& strip) const {
    File file;
    {
        const Libtiff tiff = Open(file, "w");
        SetTags(tiff.get(), *this);
        Bytes copy = strip;
        if (TIFFWriteRawStrip(tiff.get(), 0, copy.data(), static_cast<tmsize_t>(copy.size())) < 0)
            throw std::runtime_error("libtiff cannot write");
    }
    const Libtiff tiff = Open(file, "r");
    Decoded decoded{Bytes(static_cast<std::size_t>(TIFFStripSize(tiff.get()))), false};
    const auto size = static_cast<tmsize_t>(decoded.rows.size());
    decoded.isWhole = TIFFReadEncodedStrip(tiff.get(), 0, decoded.rows.data(), size) == size;
    return decoded;
}

#endif
