#pragma once

#include <cstddef>
#include <cstdint>

namespace ET::Img::Jpg {

inline constexpr std::size_t blockSize = 64;

/// The inverse cosine transform of blocks that lie one behind another, in place: dequantised coefficients in natural
/// order become samples around 0, limited to -128 and 127 (ITU T.81 A.3.3, without the level shift).
using InverseDct = void (*)(std::int16_t* blocks, std::size_t count);

/// The form for this processor, chosen once per process.
InverseDct GetInverseDct();

/// The forms by themselves, for tests and benchmarks.
namespace InverseDctForms {

/// In 64-bit floats, by the definition, truncated towards 0.
void Reference(std::int16_t* blocks, std::size_t count);
/// In 16-bit fixed point; null where this processor lacks SSE2. Differs from the definition by the rounding of its
/// stages: less than 1.5 for coefficients of samples within 8 bits.
InverseDct Sse2();
/// The same samples from wider vectors; null where this processor lacks AVX2.
InverseDct Avx2();

} // namespace InverseDctForms

} // namespace ET::Img::Jpg
