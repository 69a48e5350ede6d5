#pragma once

#include <cstdint>
#include <utility>
#include <vector>

/// One strip of a TIFF file in memory, written and read by libtiff.
struct LibtiffStrip {
    using Bytes = std::vector<std::uint8_t>;

    std::uint32_t width = 1;
    std::uint32_t height = 1;
    std::uint16_t bitsPerSample = 8;
    std::uint16_t compression = 1;
    /// More tags, by number and value, in the order in which libtiff is to learn of them.
    std::vector<std::pair<std::uint32_t, std::uint32_t>> tags{};

    /// The strip's bytes in the file for these rows.
    Bytes Encode(const Bytes& rows) const;

    struct Decoded {
        Bytes rows; ///< What is missing is 0.
        bool isWhole;
    };
    /// The rows of a strip that has these bytes in the file.
    Decoded Decode(const Bytes& strip) const;
};
