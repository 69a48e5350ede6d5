#ifdef VARNOLITE_HAS_TIFF

#include "tests/codecs/TifPicture.h"

#include "tests/codecs/JpgReference.h"
#include "tests/codecs/LibtiffMemory.h"
#include "tests/codecs/TifReference.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace {

constexpr std::uint32_t largestTableBits = 16;
constexpr long double unknown = std::numeric_limits<long double>::quiet_NaN();

bool IsJpeg(const LibtiffFile::Format& format) {
    return format.compression == COMPRESSION_JPEG || format.compression == COMPRESSION_OJPEG;
}

/// The whole of the light for a share of it (IEC 61966-2-1).
long double SrgbOf(long double linear) {
    const long double light = std::clamp(linear, 0.0L, 1.0L);
    return light <= 0.0031308L ? 12.92L * light : 1.055L * std::pow(light, 1 / 2.4L) - 0.055L;
}

/// Blue, green and red from 0 to 1, for a white of D50: the definitions of CIE 15 and the matrix from XYZ of D50,
/// adapted after Bradford, to sRGB.
void FromLab(long double lightness, long double a, long double b, long double* color) {
    const auto inverse = [](long double f) {
        return f * f * f > 216.0L / 24389 ? f * f * f : (116 * f - 16) / (24389.0L / 27);
    };
    const long double fy = (lightness + 16) / 116;
    const long double x = 0.96422L * inverse(fy + a / 500), y = inverse(fy), z = 0.82521L * inverse(fy - b / 200);
    color[0] = SrgbOf(0.0719453L * x - 0.2289914L * y + 1.4052427L * z);
    color[1] = SrgbOf(-0.9787684L * x + 1.9161415L * y + 0.0334540L * z);
    color[2] = SrgbOf(3.1338561L * x - 1.6168667L * y - 0.4906146L * z);
}

} // namespace

TifPicture::TifPicture(const Bytes& file, std::uint32_t directory) {
    // Of YCbCr it reads the tags alone.
    m_rows = LibtiffFile::Read(file, directory, m_format);
    ReadTags(file, directory);
    // Inks, indices and colours have no sign; more than one grey are colours.
    if (m_format.sampleFormat == 2 && m_format.photometric > PHOTOMETRIC_RGB)
        m_format.sampleFormat = 1;
    if (m_format.photometric == PHOTOMETRIC_MINISBLACK && (m_format.samples == 3 || m_format.samples == 4))
        m_format.photometric = PHOTOMETRIC_RGB;
    if (m_format.photometric == PHOTOMETRIC_YCBCR)
        ReadUnits(file, directory);
    m_isRead = !m_rows.empty() || !m_units.empty();
    if (m_format.bits <= largestTableBits && m_isRead)
        for (std::uint64_t i = 0; i < std::uint64_t{1} << m_format.bits; ++i)
            m_numbers.push_back(NumberOf(TifReference::ChannelOf(i, m_format.bits, m_format.sampleFormat)));
    SetTolerance();
}

void TifPicture::SetTolerance() {
    const bool isDivided = std::count(m_extra.begin(), m_extra.end(), EXTRASAMPLE_ASSOCALPHA) != 0;
    // Both inverse transforms round: a brightness by one, and a chrominance, which colours take up to 1.772 times.
    // An ink stands in two of them.
    if (IsJpeg(m_format))
        m_tolerance = m_format.photometric == PHOTOMETRIC_YCBCR       ? 4
                      : m_format.photometric == PHOTOMETRIC_SEPARATED ? 3
                                                                      : 1;
    else if (m_format.photometric == PHOTOMETRIC_CIELAB)
        m_tolerance = m_format.bits == 8 ? 1 : 32;
    else if (m_format.photometric == PHOTOMETRIC_SEPARATED || isDivided)
        m_tolerance = m_format.sampleFormat == 3 ? 1e-6L : 0.5L;
}

void TifPicture::ReadTags(const Bytes& bytes, std::uint32_t directory) {
    LibtiffMemory file{bytes};
    const Libtiff tiff = OpenLibtiff(file, "r");
    if (!tiff || !TIFFSetDirectory(tiff.get(), static_cast<tdir_t>(directory)))
        return;
    std::uint16_t count = 0;
    std::uint16_t* values = nullptr;
    TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_EXTRASAMPLES, &count, &values);
    m_extra.assign(values, values + count);
    TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_YCBCRSUBSAMPLING, &m_format.chroma.first, &m_format.chroma.second);
    if (m_format.photometric == PHOTOMETRIC_PALETTE)
        ReadMap(tiff.get());
}

void TifPicture::ReadMap(TIFF* tiff) {
    std::uint16_t* colors[3]{};
    if (!TIFFGetField(tiff, TIFFTAG_COLORMAP, &colors[0], &colors[1], &colors[2]))
        return;
    bool isOfBytes = true, isDoubled = true, isOfHighBytes = true;
    for (std::size_t c = 0; c < 3; ++c)
        for (std::size_t i = 0; i < std::size_t{1} << m_format.bits; ++i) {
            const std::uint16_t number = colors[c][i];
            m_map[c].push_back(number);
            isOfBytes = isOfBytes && number < 256;
            isDoubled = isDoubled && number % 257 == 0;
            isOfHighBytes = isOfHighBytes && number % 256 == 0;
        }
    m_isMapOfBytes = isOfBytes || isDoubled || isOfHighBytes;
    m_mapShift = m_isMapOfBytes && !isOfBytes ? 8 : 0;
}

void TifPicture::ReadUnits(const Bytes& bytes, std::uint32_t directory) {
    LibtiffMemory file{bytes};
    const Libtiff tiff = OpenLibtiff(file, "r");
    if (!tiff || !TIFFSetDirectory(tiff.get(), static_cast<tdir_t>(directory)) || m_format.bits != 8)
        return;
    const bool isTiled = TIFFIsTiled(tiff.get()) != 0;
    m_unitColumns = m_format.width;
    if (isTiled) {
        TIFFGetField(tiff.get(), TIFFTAG_TILEWIDTH, &m_unitColumns);
        TIFFGetField(tiff.get(), TIFFTAG_TILELENGTH, &m_unitRows);
    } else {
        TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_ROWSPERSTRIP, &m_unitRows);
        m_unitRows = std::min(m_unitRows, m_format.height);
    }
    const std::uint32_t count = isTiled ? TIFFNumberOfTiles(tiff.get()) : TIFFNumberOfStrips(tiff.get());
    for (std::uint32_t i = 0; i < count; ++i) {
        m_units.push_back(ReadUnit(tiff.get(), i));
        if (m_units.back().empty()) {
            m_units.clear();
            return;
        }
    }
    // What old files really have is known when their data were read.
    TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_YCBCRSUBSAMPLING, &m_format.chroma.first, &m_format.chroma.second);
}

// Where pixels share their chrominance, libtiff either makes it smooth or, in strips, loses a part of it: here libjpeg
// itself decodes. Of old JPEG, which is no whole file, libtiff gives the units.
TifPicture::Bytes TifPicture::ReadUnit(TIFF* tiff, std::uint32_t unit) const {
    const bool isTiled = TIFFIsTiled(tiff) != 0;
    if (m_format.compression != COMPRESSION_JPEG) {
        Bytes units(static_cast<std::size_t>(isTiled ? TIFFTileSize(tiff) : TIFFStripSize(tiff)));
        const auto size = static_cast<tmsize_t>(units.size());
        const tmsize_t read = isTiled ? TIFFReadEncodedTile(tiff, unit, units.data(), size)
                                      : TIFFReadEncodedStrip(tiff, unit, units.data(), size);
        return read < 0 ? Bytes() : units;
    }
    const auto size = static_cast<tmsize_t>(TIFFGetStrileByteCount(tiff, unit));
    Bytes file(static_cast<std::size_t>(size));
    if ((isTiled ? TIFFReadRawTile(tiff, unit, file.data(), size) : TIFFReadRawStrip(tiff, unit, file.data(), size)) <
        0)
        return {};
    std::uint32_t tableBytes = 0;
    const std::uint8_t* tables = nullptr;
    // The tables without their end, and the data without their start.
    if (TIFFGetField(tiff, TIFFTAG_JPEGTABLES, &tableBytes, &tables) && tableBytes > 4) {
        file.erase(file.begin(), file.begin() + 2);
        file.insert(file.begin(), tables, tables + tableBytes - 2);
    }
    Bytes colors = DecodeJpgByLibrary(file);
    return colors.size() % (std::size_t{3} * m_unitColumns) == 0 ? colors : Bytes();
}

long double TifPicture::NumberOf(std::uint64_t channel) const {
    const std::uint32_t bits = TifReference::ChannelBits(m_format.bits, m_format.sampleFormat);
    if (m_format.sampleFormat == 3)
        return TifReference::FloatOf(channel, bits);
    const bool isSigned = m_format.sampleFormat == 2 && m_format.photometric <= PHOTOMETRIC_RGB;
    if (isSigned && channel >> (bits - 1) != 0)
        return -static_cast<long double>((~channel & (~std::uint64_t{0} >> (64 - bits)))) - 1;
    return static_cast<long double>(channel);
}

long double TifPicture::Full() const {
    if (m_format.photometric == PHOTOMETRIC_PALETTE)
        return m_isMapOfBytes ? 255 : 65535;
    return NumberOf(TifReference::FullOf(m_format.bits, m_format.sampleFormat));
}

long double TifPicture::ColorAt(std::uint32_t x, std::uint32_t y, std::uint32_t sample) const {
    const std::uint64_t bits = LibtiffFile::SampleOf(m_rows, m_format, x, y, sample);
    return !m_numbers.empty() ? m_numbers[bits]
                              : NumberOf(TifReference::ChannelOf(bits, m_format.bits, m_format.sampleFormat));
}

void TifPicture::AppendYCbCr(std::uint32_t x, std::uint32_t y, std::vector<long double>& row) const {
    const std::uint32_t across = (m_format.width + m_unitColumns - 1) / m_unitColumns;
    const Bytes& units = m_units[y / m_unitRows * across + x / m_unitColumns];
    const std::uint32_t inX = x % m_unitColumns, inY = y % m_unitRows;
    if (m_format.compression == COMPRESSION_JPEG) {
        const std::uint8_t* const pixel = units.data() + 3 * (std::size_t(inY) * m_unitColumns + inX);
        row.insert(row.end(), pixel, pixel + 3);
        row.push_back(255);
        return;
    }
    const std::uint32_t horizontal = m_format.chroma.first, vertical = m_format.chroma.second;
    const std::size_t unitBytes = horizontal * vertical + 2;
    const std::size_t unitsOfRow = (m_unitColumns + horizontal - 1) / horizontal;
    const std::uint8_t* const unit = units.data() + (inY / vertical * unitsOfRow + inX / horizontal) * unitBytes;
    const int luminance = unit[inY % vertical * horizontal + inX % horizontal];
    for (const std::uint8_t channel : TifReference::OfYCbCr(luminance, unit[unitBytes - 2], unit[unitBytes - 1]))
        row.push_back(channel);
}

long double TifPicture::AlphaAt(std::uint32_t x, std::uint32_t y, std::uint32_t sample) const {
    if (m_format.photometric != PHOTOMETRIC_PALETTE)
        return ColorAt(x, y, sample);
    // The map decides what channels there are.
    const auto largest = static_cast<long double>((std::uint64_t{1} << m_format.bits) - 1);
    return std::round(static_cast<long double>(LibtiffFile::SampleOf(m_rows, m_format, x, y, sample)) * Full() /
                      largest);
}

void TifPicture::ApplyAlpha(std::uint32_t x, std::uint32_t y, long double* color) const {
    const auto found = std::find_if(m_extra.begin(), m_extra.end(), [](std::uint16_t kind) { return kind != 0; });
    if (m_extra.empty() || (found == m_extra.end() && m_extra.size() > 1))
        return;
    if (found == m_extra.end()) {
        // Here libtiff says the same of a sample of no use and of one that nothing is told of.
        color[3] = unknown;
        return;
    }
    // The list is about the last samples.
    color[3] = AlphaAt(x, y, m_format.samples - static_cast<std::uint32_t>(m_extra.end() - found));
    if (*found == EXTRASAMPLE_ASSOCALPHA && color[3] > 0 && color[3] < Full())
        for (int c = 0; c < 3; ++c)
            color[c] = std::min(color[c] * Full() / color[3], m_format.sampleFormat == 3 ? color[c] * 1e9L : Full());
}

void TifPicture::AppendPixel(std::uint32_t x, std::uint32_t y, std::vector<long double>& row) const {
    const auto at = [&](std::uint32_t sample) { return ColorAt(x, y, sample); };
    long double color[4]{0, 0, 0, Full()};
    switch (m_format.photometric) {
    case PHOTOMETRIC_PALETTE: {
        const std::uint64_t index = LibtiffFile::SampleOf(m_rows, m_format, x, y, 0);
        for (std::size_t c = 0; c < 3; ++c)
            color[c] = m_map[2 - c][index] >> m_mapShift;
        break;
    }
    case PHOTOMETRIC_SEPARATED:
        for (std::uint32_t c = 0; c < 3; ++c)
            color[c] = (Full() - at(2 - c)) * (Full() - at(3)) / Full();
        break;
    case PHOTOMETRIC_CIELAB: {
        const long double half = (Full() + 1) / 2, unit = m_format.bits == 8 ? 1 : 256;
        const auto chroma = [&](long double value) { return (value >= half ? value - 2 * half : value) / unit; };
        FromLab(at(0) * 100 / Full(), chroma(at(1)), chroma(at(2)), color);
        for (int c = 0; c < 3; ++c)
            color[c] *= Full();
        break;
    }
    case PHOTOMETRIC_RGB:
        for (std::uint32_t c = 0; c < 3; ++c)
            color[c] = at(2 - c);
        break;
    default: {
        const long double lowest = m_format.sampleFormat == 2 ? -Full() - 1 : 0;
        const bool isInverted = m_format.photometric == PHOTOMETRIC_MINISWHITE && m_format.sampleFormat != 3;
        const long double grey = isInverted ? Full() + lowest - at(0) : at(0);
        // Grey pixels with more than an alpha are grey alone.
        if (m_format.samples == 1 || m_format.samples > 4) {
            row.push_back(grey);
            return;
        }
        std::fill(color, color + 3, grey);
        break;
    }
    }
    ApplyAlpha(x, y, color);
    row.insert(row.end(), color, color + 4);
}

std::vector<long double> TifPicture::Row(std::uint32_t y) const {
    std::vector<long double> row;
    row.reserve(std::size_t(m_format.width) * 4);
    for (std::uint32_t x = 0; x < m_format.width; ++x)
        if (m_format.photometric == PHOTOMETRIC_YCBCR)
            AppendYCbCr(x, y, row);
        else
            AppendPixel(x, y, row);
    return row;
}

std::string TifPicture::DifferenceTo(const TifLoad& load) const {
    if (!m_isRead)
        return "libtiff does not read it: " + GetName();
    if (load.info.Width != m_format.width || load.info.Height != m_format.height)
        return "another size: " + GetName();
    const std::vector<std::uint64_t> channels = TifReference::ChannelsOf(load);
    std::size_t place = 0;
    for (std::uint32_t y = 0; y < m_format.height; ++y) {
        const std::vector<long double> row = Row(y);
        if (row.size() * m_format.height != channels.size())
            return "another number of channels: " + GetName();
        for (std::size_t i = 0; i < row.size(); ++i, ++place) {
            const long double had = NumberOf(channels[place]);
            if (std::isnan(row[i]) || std::abs(had - row[i]) <= m_tolerance)
                continue;
            return "row " + std::to_string(y) + ", channel " + std::to_string(i) + ": " + std::to_string(had) +
                   " for " + std::to_string(row[i]) + ": " + GetName();
        }
    }
    return "";
}

std::string TifPicture::GetName() const {
    return std::to_string(m_format.samples) + " x " + std::to_string(m_format.bits) + " bits of format " +
           std::to_string(m_format.sampleFormat) + ", photometric " + std::to_string(m_format.photometric) +
           ", compression " + std::to_string(m_format.compression);
}

#endif
