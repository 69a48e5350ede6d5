#pragma once

#include <array>
#include <cstdint>
#include <vector>

/// JPEG files made of quantised coefficients, by a plain encoder out of ITU T.81 annexes F and G. All codes have eight
/// bits, and all components one block per MCU.
namespace JpgCoefficients {

using Bytes = std::vector<std::uint8_t>;
/// In zigzag order.
using Block = std::array<int, 64>;

struct Picture {
    std::uint16_t width = 20;
    std::uint16_t height = 13;
    unsigned precision = 8;
    std::vector<std::vector<Block>> components; ///< Blocks row by row.

    unsigned Columns() const { return (width + 7u) / 8; }
    std::size_t BlockCount() const { return std::size_t(Columns()) * ((height + 7u) / 8); }
};

/// Blocks of all kinds: empty ones in runs, single coefficients far from each other, and full ones.
Picture RandomPicture(std::uint16_t width, std::uint16_t height, unsigned precision, unsigned components,
                      unsigned seed);

struct Scan {
    std::vector<std::uint8_t> components; ///< From 0 on.
    std::uint8_t first = 0;               ///< Ss
    std::uint8_t last = 0;                ///< Se
    std::uint8_t high = 0;                ///< Ah
    std::uint8_t low = 0;                 ///< Al
};

/// One that brings all bits of all coefficients of that many components.
std::vector<Scan> WholeScript(std::uint8_t components);

/// Tables and frame header of marker C0 or C2, without a scan.
Bytes Head(const Picture& picture, std::uint8_t marker, std::uint16_t restartInterval = 0);
/// A scan of a frame of the marker C0, which takes no notice of bands and bits, or C2.
Bytes EncodedScan(const Picture& picture, std::uint8_t marker, const Scan& scan, std::uint16_t restartInterval = 0);

/// A whole file of one scan with all components.
Bytes SequentialFile(const Picture& picture);
/// A whole file of the scans.
Bytes ProgressiveFile(const Picture& picture, const std::vector<Scan>& scans, std::uint16_t restartInterval = 0);

} // namespace JpgCoefficients
