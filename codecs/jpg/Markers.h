#pragma once

#include "foundation/String.h"

#include <cstdint>

/// The second bytes of markers (ITU T.81 table B.1) and what is said about those that cannot be.
namespace ET::Img::Jpg::Marker {

inline constexpr std::uint8_t prefix = 0xFF;
inline constexpr std::uint8_t baselineFrame = 0xC0;
inline constexpr std::uint8_t progressiveFrame = 0xC2;
inline constexpr std::uint8_t losslessFrame = 0xC3;
inline constexpr std::uint8_t huffmanTables = 0xC4;
inline constexpr std::uint8_t firstRestart = 0xD0; ///< Of eight.
inline constexpr std::uint8_t startOfImage = 0xD8;
inline constexpr std::uint8_t endOfImage = 0xD9;
inline constexpr std::uint8_t startOfScan = 0xDA;
inline constexpr std::uint8_t quantisationTables = 0xDB;
inline constexpr std::uint8_t restartInterval = 0xDD;
inline constexpr std::uint8_t exif = 0xE1;
inline constexpr std::uint8_t adobe = 0xEE;

/// Of one of the eight restart markers.
inline bool IsRestart(std::uint8_t marker) {
    return (marker & 0xF8) == firstRestart;
}

/// For a byte in the place of a prefix.
Quorvex::String ExpectedText(std::uint32_t offset);
/// Raises Exception for frames of other kinds and for markers that stand alone in the wrong place.
void RefuseUnsupported(std::uint8_t marker, std::uint32_t offset);

} // namespace ET::Img::Jpg::Marker
