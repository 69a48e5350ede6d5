#pragma once

#include <cstdint>
#include <utility>
#include <vector>

/// Whole TIFF files in memory, written and read by libtiff.
namespace LibtiffFile {

using Bytes = std::vector<std::uint8_t>;

struct Format {
    std::uint32_t width = 1;
    std::uint32_t height = 1;
    std::uint16_t bits = 8;
    std::uint16_t samples = 1;
    std::uint16_t sampleFormat = 1;
    std::uint16_t photometric = 1;
    std::uint16_t compression = 1;
    std::uint16_t predictor = 1;
    std::uint16_t fillOrder = 1;
    bool isPlanar = false;
    bool isBigEndian = false;
    std::uint16_t extraSample = 0; ///< What the samples behind the colours are; 0: nothing is told.
    std::uint32_t tileSize = 0;    ///< 0: strips.
    std::uint32_t tileHeight = 0;  ///< 0: as the width.
    std::uint32_t rowsPerStrip = 3;
    /// More tags of a single number, in the order in which libtiff is to learn of them.
    std::vector<std::pair<std::uint32_t, std::uint32_t>> tags{};
    std::pair<std::uint16_t, std::uint16_t> chroma{0, 0};
};

/// Rows of one plane are packed without gaps but those at their ends, samples of 16 bits and more in the order of the
/// processor. Planes follow each other.
Bytes Write(const Format& format, const Bytes& rows);

/// The rows of the directory as Write takes them; empty where libtiff cannot read all of it, and for
/// YCbCr, whose rows are none of samples.
Bytes Read(const Bytes& file, std::uint32_t directory, Format& format);

/// Sample s of a pixel, as these rows hold it: depths that are no whole bytes from the highest bit on, and those of 40,
/// 48 and 56 bits, which libtiff takes for bytes, in the order of the file.
std::uint64_t SampleOf(const Bytes& rows, const Format& format, std::size_t x, std::size_t y, std::size_t s);

/// Red, green, blue and alpha of all pixels, top row first; empty where libtiff cannot make them.
Bytes ReadColors(const Bytes& file, std::uint32_t directory = 0);

} // namespace LibtiffFile
