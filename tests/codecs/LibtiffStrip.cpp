#ifdef VARNOLITE_HAS_TIFF

#include "tests/codecs/LibtiffStrip.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <stdexcept>

#include <tiffio.h>

namespace {

using Bytes = LibtiffStrip::Bytes;

/// A file in memory as libtiff wants to have it.
struct File {
    Bytes bytes;
    std::size_t position = 0;

    static File& Of(thandle_t handle) { return *static_cast<File*>(handle); }

    static tmsize_t Read(thandle_t handle, void* target, tmsize_t size) {
        File& file = Of(handle);
        const std::size_t rest = file.bytes.size() - std::min(file.position, file.bytes.size());
        const std::size_t count = std::min(static_cast<std::size_t>(size), rest);
        if (count > 0)
            std::memcpy(target, file.bytes.data() + file.position, count);
        file.position += count;
        return static_cast<tmsize_t>(count);
    }
    static tmsize_t Write(thandle_t handle, void* source, tmsize_t size) {
        File& file = Of(handle);
        const auto count = static_cast<std::size_t>(size);
        file.bytes.resize(std::max(file.bytes.size(), file.position + count));
        std::memcpy(file.bytes.data() + file.position, source, count);
        file.position += count;
        return size;
    }
    static toff_t Seek(thandle_t handle, toff_t offset, int whence) {
        File& file = Of(handle);
        const std::size_t base = whence == SEEK_CUR ? file.position : whence == SEEK_END ? file.bytes.size() : 0;
        file.position = base + offset;
        return file.position;
    }
    static int Close(thandle_t) { return 0; }
    static toff_t Size(thandle_t handle) { return Of(handle).bytes.size(); }
};

using Tiff = std::unique_ptr<TIFF, decltype(&TIFFClose)>;

Tiff Open(File& file, const char* mode) {
    // Its messages about damaged data are expected.
    TIFFSetErrorHandler(nullptr);
    TIFFSetWarningHandler(nullptr);
    file.position = 0;
    Tiff tiff(TIFFClientOpen("memory", mode, &file, File::Read, File::Write, File::Seek, File::Close, File::Size,
                             nullptr, nullptr),
              &TIFFClose);
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
        const Tiff tiff = Open(file, "w");
        SetTags(tiff.get(), *this);
        Bytes copy = rows;
        if (TIFFWriteEncodedStrip(tiff.get(), 0, copy.data(), static_cast<tmsize_t>(copy.size())) < 0)
            throw std::runtime_error("libtiff cannot encode");
    }
    const Tiff tiff = Open(file, "r");
    Bytes strip(TIFFRawStripSize(tiff.get(), 0));
    TIFFReadRawStrip(tiff.get(), 0, strip.data(), static_cast<tmsize_t>(strip.size()));
    return strip;
}

LibtiffStrip::Decoded LibtiffStrip::Decode(const Bytes& strip) const {
    File file;
    {
        const Tiff tiff = Open(file, "w");
        SetTags(tiff.get(), *this);
        Bytes copy = strip;
        if (TIFFWriteRawStrip(tiff.get(), 0, copy.data(), static_cast<tmsize_t>(copy.size())) < 0)
            throw std::runtime_error("libtiff cannot write");
    }
    const Tiff tiff = Open(file, "r");
    Decoded decoded{Bytes(static_cast<std::size_t>(TIFFStripSize(tiff.get()))), false};
    const auto size = static_cast<tmsize_t>(decoded.rows.size());
    decoded.isWhole = TIFFReadEncodedStrip(tiff.get(), 0, decoded.rows.data(), size) == size;
    return decoded;
}

#endif
