#pragma once

#include <cstdint>
#include <vector>

/// Rows of black and white pixels, black as 1.
using BilevelRows = std::vector<std::vector<std::uint8_t>>;

/// What encoders of ITU T.4 are free to do.
struct CcittStyle {
    bool hasEndsOfLine = false;
    bool isByteAligned = false; ///< Rows begin with a byte; with ends of line those end with one.
    std::uint32_t relativeRows =
        0; ///< In two dimensions: how many rows follow one that stands alone. 0: one dimension.
    bool isTwoDimensional = false;
    bool isReversed = false;
    std::uint32_t endsOfLineAtEnd = 0;
};

/// A plain encoder, which asks pixel by pixel.
std::vector<std::uint8_t> WriteCcitt(const BilevelRows& rows, const CcittStyle& style);

/// The rows as they are packed, the highest bit first.
std::vector<std::uint8_t> Packed(const BilevelRows& rows);
