#pragma once

#include "tests/codecs/TifLoad.h"

#include <array>
#include <cstdint>
#include <vector>

/// What the samples of a file become in the image, from the formulas alone. Formats are numbered as their tag does:
/// 1 unsigned, 2 signed, 3 floating point; channels are given by their bits.
namespace TifReference {

std::uint32_t ChannelBits(std::uint32_t bits, std::uint32_t format);
/// Unsigned numbers take the whole range of the channel, and signed ones keep their zero.
std::uint64_t ChannelOf(std::uint64_t sample, std::uint32_t bits, std::uint32_t format);
/// An alpha that hides what is behind.
std::uint64_t FullOf(std::uint32_t bits, std::uint32_t format);

/// The number that the bits of a float of 16, 24, 32 or 64 bits stand for.
double FloatOf(std::uint64_t sample, std::uint32_t bits);

/// Blue, green, red and alpha.
std::array<std::uint8_t, 4> OfYCbCr(int y, int cb, int cr);

/// All channels of an image in the order of memory.
std::vector<std::uint64_t> ChannelsOf(const TifLoad& load);

} // namespace TifReference
