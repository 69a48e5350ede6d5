#pragma once

#include "tests/codecs/LibtiffFile.h"
#include "tests/codecs/TifLoad.h"

#include <string>
#include <vector>

struct tiff; // What libtiff calls TIFF; builds without it read this header too.

/// The picture of a directory: what libtiff reads, made into channels by plain formulas.
class TifPicture {
public:
    using Bytes = LibtiffFile::Bytes;

    TifPicture(const Bytes& file, std::uint32_t directory);

    /// Whether libtiff reads all of it.
    bool IsRead() const { return m_isRead; }
    /// In words: where the loaded image is first another one than this, with what it is; empty where they are the same
    /// but for what two decoders may round differently. A picture that was not read differs from any.
    std::string DifferenceTo(const TifLoad& load) const;

private:
    /// Grey, or blue, green, red and alpha of the pixels of a row; no number where nothing is known of the alpha.
    std::vector<long double> Row(std::uint32_t y) const;
    /// The number that the bits of a channel of the image stand for.
    long double NumberOf(std::uint64_t channel) const;
    std::string GetName() const;
    void ReadTags(const Bytes& file, std::uint32_t directory);
    void SetTolerance();
    void ReadMap(tiff* source);
    void ReadUnits(const Bytes& file, std::uint32_t directory);
    Bytes ReadUnit(tiff* source, std::uint32_t unit) const;
    long double ColorAt(std::uint32_t x, std::uint32_t y, std::uint32_t sample) const;
    void AppendPixel(std::uint32_t x, std::uint32_t y, std::vector<long double>& row) const;
    void AppendYCbCr(std::uint32_t x, std::uint32_t y, std::vector<long double>& row) const;
    void ApplyAlpha(std::uint32_t x, std::uint32_t y, long double* color) const;
    long double AlphaAt(std::uint32_t x, std::uint32_t y, std::uint32_t sample) const;
    long double Full() const;

    LibtiffFile::Format m_format;
    Bytes m_rows;
    /// Of each strip or tile of YCbCr: luminances and the chrominances that they share; of JPEG blue, green and red.
    std::vector<Bytes> m_units;
    std::uint32_t m_unitColumns = 0, m_unitRows = 0; ///< Pixels of a strip or tile.
    std::vector<long double> m_numbers; ///< Of all samples that there may be, where those are not too many.
    std::vector<std::uint16_t> m_map[3];
    std::vector<std::uint16_t> m_extra;
    std::uint32_t m_mapShift = 0;
    bool m_isMapOfBytes = false;
    bool m_isRead = false;
    long double m_tolerance = 0;
};
