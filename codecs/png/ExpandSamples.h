#pragma once

#include <cstdint>

namespace ET::Img::Png {

/// Turns samples as a PNG file orders them, red before green before blue, the high byte of 16 bits first, into pixels
/// of blue, green, red and alpha in the machine's byte order. One grey sample fills three channels; without alpha the
/// pixel is opaque. The destination is a row of ColorBGRA of 8 or 16 bits.
using ExpandForm = void (*)(const std::uint8_t* source, void* destination, std::uint32_t count);

/// Bytes behind the source that may be read, but do not matter.
constexpr std::uint32_t expandReadsBehind = 16;

/// The fastest form that the processor has. Samples of 1 to 4 channels, of 1 or 2 bytes.
ExpandForm ChooseExpandForm(std::uint32_t channels, std::uint32_t sampleBytes);

/// The forms by themselves, for tests: all give the same pixels.
namespace ExpandForms {

ExpandForm Plain(std::uint32_t channels, std::uint32_t sampleBytes);
/// Null where this processor lacks the instructions.
ExpandForm Ssse3(std::uint32_t channels, std::uint32_t sampleBytes);

} // namespace ExpandForms

} // namespace ET::Img::Png
