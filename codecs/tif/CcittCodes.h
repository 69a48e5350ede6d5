#pragma once

#include <cstdint>
#include <span>

namespace ET::Img::Ccitt {

/// A code of the standard's tables as it is printed, and the run length that it stands for.
struct RunCode {
    const char* bits;
    std::uint16_t length;
};

/// Tables 2 and 3 of ITU T.4: runs of up to 63 pixels, and the multiples of 64 that precede them for longer ones.
std::span<const RunCode> GetWhiteCodes();
std::span<const RunCode> GetBlackCodes();
/// Those multiples from 1792 on that both colours share.
std::span<const RunCode> GetSharedCodes();

/// What the next bits stand for; of no bits where they are no code.
struct RunEntry {
    std::uint16_t length = 0;
    std::uint8_t bits = 0;
};

/// As many bits as the longest code has.
constexpr unsigned longestRunCode = 13;
/// The entries of all 2^13 combinations of bits.
const RunEntry* GetWhiteEntries();
const RunEntry* GetBlackEntries();

/// How a row goes on in relation to the one above it (ITU T.4 table 4).
enum class Mode : std::uint8_t { None, Pass, Horizontal, Vertical };

struct ModeEntry {
    Mode mode = Mode::None;
    std::int8_t offset = 0; ///< Of a vertical one, in pixels to the right.
    std::uint8_t bits = 0;
};

constexpr unsigned longestModeCode = 7;
/// The entries of all 2^7 combinations of bits.
const ModeEntry* GetModeEntries();

} // namespace ET::Img::Ccitt
