#pragma once

#include <cstddef>
#include <cstdint>

namespace ET::Img::Jpg {

inline constexpr std::size_t blockSize = 64;

/// The inverse cosine transform of one block in place: dequantised coefficients in natural order become samples around
/// 0, limited to -128 and 127 (ITU T.81 A.3.3, without the level shift). The block is 16-byte aligned.
using InverseDct = void (*)(std::int16_t* block);

/// The form for this processor, chosen once per process.
InverseDct GetInverseDct();

/// The forms by themselves, for tests and benchmarks.
namespace InverseDctForms {

/// In 64-bit floats, by the definition, truncated towards 0.
void Reference(std::int16_t* block);
/// In 16-bit fixed point; null where this processor lacks SSE2. Differs from the definition by the rounding of its
/// stages: at most 1 for coefficients of samples within 8 bits.
InverseDct Sse2();

} // namespace InverseDctForms

} // namespace ET::Img::Jpg
