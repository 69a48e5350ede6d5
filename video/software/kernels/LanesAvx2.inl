// Four 64-bit floats at once for processors with AVX2. Included by a source file of its own.

#include <cstdint>
#include <immintrin.h>

// A compiler inlines a function only into one that has all its instructions.
#define LANES_TARGET __attribute__((target("avx2")))
#define LANES_FUNCTION __attribute__((target("avx2"), always_inline)) inline

namespace Quorvex::Platform::Video::Software {
namespace {

using Lanes = __m256d;
/// One integer in the low half of each of four times 64 bits.
using IntLanes = __m256i;

LANES_FUNCTION Lanes Load(const double* values) {
    return _mm256_loadu_pd(values);
}
LANES_FUNCTION void Store(double* values, Lanes lanes) {
    _mm256_storeu_pd(values, lanes);
}
LANES_FUNCTION Lanes Broadcast(double value) {
    return _mm256_set1_pd(value);
}
LANES_FUNCTION Lanes Add(Lanes a, Lanes b) {
    return _mm256_add_pd(a, b);
}
LANES_FUNCTION Lanes Subtract(Lanes a, Lanes b) {
    return _mm256_sub_pd(a, b);
}
LANES_FUNCTION Lanes Multiply(Lanes a, Lanes b) {
    return _mm256_mul_pd(a, b);
}
LANES_FUNCTION Lanes Minimum(Lanes a, Lanes b) {
    return _mm256_min_pd(a, b);
}
LANES_FUNCTION Lanes Maximum(Lanes a, Lanes b) {
    return _mm256_max_pd(a, b);
}
LANES_FUNCTION Lanes Magnitude(Lanes a) {
    return _mm256_andnot_pd(_mm256_set1_pd(-0.0), a);
}
LANES_FUNCTION bool IsAnyAbove(Lanes a, Lanes limit) {
    return _mm256_movemask_pd(_mm256_cmp_pd(a, limit, _CMP_GT_OQ)) != 0;
}

struct RoundedLanes {
    IntLanes integers;
    Lanes values;
};

/// For magnitudes below 2^31. A sum near 1.5 * 2^52 has no bits below 1, and its lowest ones are the integer: two
/// additions, where conversions to integers and back would take twice as many operations.
LANES_FUNCTION RoundedLanes RoundToNearest(Lanes a) {
    const Lanes sum = Add(a, Broadcast(0x1.8p52));
    return {_mm256_castpd_si256(sum), Subtract(sum, Broadcast(0x1.8p52))};
}
LANES_FUNCTION IntLanes LowBytes(IntLanes a) {
    return _mm256_and_si256(a, _mm256_set1_epi64x(0xFF));
}
LANES_FUNCTION __m256i LowHalves(IntLanes a, IntLanes b) {
    return _mm256_castps_si256(_mm256_shuffle_ps(_mm256_castsi256_ps(a), _mm256_castsi256_ps(b), 0x88));
}
/// Four colour pixels, one per argument. Values lie within 0 to 255.
LANES_FUNCTION void StoreColors(Color* pixels, IntLanes a, IntLanes b, IntLanes c, IntLanes d) {
    // Blue and green of all four pixels, then red and alpha.
    const __m256i words = _mm256_packs_epi32(LowHalves(a, b), LowHalves(c, d));
    const __m128i bytes = _mm_packus_epi16(_mm256_castsi256_si128(words), _mm256_extracti128_si256(words, 1));
    const __m128i byPixel = _mm_setr_epi8(0, 1, 8, 9, 2, 3, 10, 11, 4, 5, 12, 13, 6, 7, 14, 15);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(pixels), _mm_shuffle_epi8(bytes, byPixel));
}
/// Four grey pixels. Values lie within 0 to 255.
LANES_FUNCTION void StoreGreys(Color* pixels, IntLanes a) {
    const __m256i lowHalves = _mm256_permutevar8x32_epi32(a, _mm256_setr_epi32(0, 2, 4, 6, 0, 2, 4, 6));
    const __m128i spread = _mm_setr_epi8(0, 0, 0, -1, 4, 4, 4, -1, 8, 8, 8, -1, 12, 12, 12, -1);
    const __m128i greys = _mm_shuffle_epi8(_mm256_castsi256_si128(lowHalves), spread);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(pixels),
                     _mm_or_si128(greys, _mm_set1_epi32(static_cast<int>(0xFF000000))));
}

/// Eight neighbouring channels as two times four lanes.
struct WideLanes {
    Lanes low;
    Lanes high;
};

LANES_FUNCTION WideLanes FromIntegers(__m256i a) {
    return {_mm256_cvtepi32_pd(_mm256_castsi256_si128(a)), _mm256_cvtepi32_pd(_mm256_extracti128_si256(a, 1))};
}
LANES_FUNCTION __m128i LoadBits(const void* bits) {
    return _mm_loadu_si128(static_cast<const __m128i*>(bits));
}
LANES_FUNCTION __m128i LoadHalfBits(const void* bits) {
    return _mm_loadl_epi64(static_cast<const __m128i*>(bits));
}
LANES_FUNCTION WideLanes Widen(const std::uint8_t* channels) {
    return FromIntegers(_mm256_cvtepu8_epi32(LoadHalfBits(channels)));
}
LANES_FUNCTION WideLanes Widen(const std::int8_t* channels) {
    return FromIntegers(_mm256_cvtepi8_epi32(LoadHalfBits(channels)));
}
LANES_FUNCTION WideLanes Widen(const std::uint16_t* channels) {
    return FromIntegers(_mm256_cvtepu16_epi32(LoadBits(channels)));
}
LANES_FUNCTION WideLanes Widen(const std::int16_t* channels) {
    return FromIntegers(_mm256_cvtepi16_epi32(LoadBits(channels)));
}
LANES_FUNCTION WideLanes Widen(const std::int32_t* channels) {
    return {_mm256_cvtepi32_pd(LoadBits(channels)), _mm256_cvtepi32_pd(LoadBits(channels + 4))};
}
LANES_FUNCTION WideLanes Widen(const float* channels) {
    return {_mm256_cvtps_pd(_mm_loadu_ps(channels)), _mm256_cvtps_pd(_mm_loadu_ps(channels + 4))};
}

} // namespace
} // namespace Quorvex::Platform::Video::Software
