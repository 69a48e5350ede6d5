#pragma once

#include "tests/codecs/JpgBitWriter.h"

#include <cstdint>
#include <initializer_list>
#include <vector>

/// JPEG files written marker by marker.
namespace JpgSegments {

using Bytes = std::vector<std::uint8_t>;

inline Bytes operator+(Bytes front, const Bytes& back) {
    front.insert(front.end(), back.begin(), back.end());
    return front;
}

/// FF, the marker, the length of the content with its own two bytes, and the content.
inline Bytes Segment(std::uint8_t marker, const Bytes& content) {
    const std::size_t length = content.size() + 2;
    return Bytes{0xFF, marker, static_cast<std::uint8_t>(length >> 8), static_cast<std::uint8_t>(length)} + content;
}

inline const Bytes start{0xFF, 0xD8};
inline const Bytes end{0xFF, 0xD9};

struct FrameComponent {
    std::uint8_t identifier;
    std::uint8_t factors = 0x11;
};

/// C0, C2 or C3.
inline Bytes FrameHeader(std::uint8_t marker, std::uint8_t precision, std::uint16_t width, std::uint16_t height,
                         const std::vector<FrameComponent>& components) {
    Bytes content{precision,
                  static_cast<std::uint8_t>(height >> 8),
                  static_cast<std::uint8_t>(height),
                  static_cast<std::uint8_t>(width >> 8),
                  static_cast<std::uint8_t>(width),
                  static_cast<std::uint8_t>(components.size())};
    for (const FrameComponent& component : components)
        content = content + Bytes{component.identifier, component.factors, 0};
    return Segment(marker, content);
}

/// All coefficients are stored undivided.
inline Bytes FlatQuantisation() {
    return Segment(0xDB, Bytes{0x00} + Bytes(64, 1));
}

/// Codes of four bits for the sizes 0 to 14 of differences, or of coefficients without zeros before them; 0 in the
/// latter ends the block.
inline Bytes FourBitCodes(std::uint8_t tableClassAndSelector) {
    Bytes content{tableClassAndSelector, 0, 0, 0, 15, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    for (std::uint8_t size = 0; size < 15; ++size)
        content.push_back(size);
    return Segment(0xC4, content);
}

/// The most symbols that a table can have, 0 to 254, all with codes of eight bits that equal them.
inline Bytes EightBitCodes(std::uint8_t tableClassAndSelector) {
    Bytes content{tableClassAndSelector, 0, 0, 0, 0, 0, 0, 0, 255, 0, 0, 0, 0, 0, 0, 0, 0};
    for (std::uint8_t symbol = 0; symbol < 255; ++symbol)
        content.push_back(symbol);
    return Segment(0xC4, content);
}

inline Bytes RestartInterval(std::uint16_t mcus) {
    return Segment(0xDD, {static_cast<std::uint8_t>(mcus >> 8), static_cast<std::uint8_t>(mcus)});
}

/// Of components with the tables 0.
inline Bytes ScanHeader(const Bytes& identifiers, std::uint8_t first = 0, std::uint8_t last = 63,
                        std::uint8_t bits = 0) {
    Bytes content{static_cast<std::uint8_t>(identifiers.size())};
    for (const std::uint8_t identifier : identifiers)
        content = content + Bytes{identifier, 0};
    return Segment(0xDA, content + Bytes{first, last, bits});
}

/// Blocks of one coefficient, for a file with the codes and the quantisation above: each is flat, and differs from the
/// one before by the eighth of a number.
inline Bytes FlatBlocks(const std::vector<int>& differences) {
    JpgBitWriter writer;
    for (const int difference : differences) {
        writer.Put(JpgBitWriter::SizeOf(difference), 4);
        writer.PutNumber(difference);
        writer.Put(0, 4);
    }
    return writer.Take();
}

/// A baseline frame of grey blocks without any coefficient, and its scan up to the entropy-coded data.
inline Bytes GreyFileUpToItsData(std::uint16_t width, std::uint16_t height) {
    return start + FlatQuantisation() + FourBitCodes(0x00) + FourBitCodes(0x10) +
           FrameHeader(0xC0, 8, width, height, {{1}}) + ScanHeader({1});
}

} // namespace JpgSegments
