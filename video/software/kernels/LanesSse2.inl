// Four 64-bit floats at once for every x86 processor of this century. Included by a source file of its own.

#include <cstdint>
#include <emmintrin.h>

#define LANES_TARGET
#define LANES_FUNCTION __attribute__((always_inline)) inline

namespace Quorvex::Platform::Video::Software {
namespace {

struct Lanes {
    __m128d low;
    __m128d high;
};
using IntLanes = __m128i;

LANES_FUNCTION Lanes Load(const double* values) {
    return {_mm_loadu_pd(values), _mm_loadu_pd(values + 2)};
}
LANES_FUNCTION void Store(double* values, Lanes lanes) {
    _mm_storeu_pd(values, lanes.low);
    _mm_storeu_pd(values + 2, lanes.high);
}
LANES_FUNCTION Lanes Broadcast(double value) {
    return {_mm_set1_pd(value), _mm_set1_pd(value)};
}
LANES_FUNCTION Lanes Add(Lanes a, Lanes b) {
    return {_mm_add_pd(a.low, b.low), _mm_add_pd(a.high, b.high)};
}
LANES_FUNCTION Lanes Subtract(Lanes a, Lanes b) {
    return {_mm_sub_pd(a.low, b.low), _mm_sub_pd(a.high, b.high)};
}
LANES_FUNCTION Lanes Multiply(Lanes a, Lanes b) {
    return {_mm_mul_pd(a.low, b.low), _mm_mul_pd(a.high, b.high)};
}
LANES_FUNCTION Lanes Minimum(Lanes a, Lanes b) {
    return {_mm_min_pd(a.low, b.low), _mm_min_pd(a.high, b.high)};
}
LANES_FUNCTION Lanes Maximum(Lanes a, Lanes b) {
    return {_mm_max_pd(a.low, b.low), _mm_max_pd(a.high, b.high)};
}
LANES_FUNCTION Lanes Magnitude(Lanes a) {
    const __m128d sign = _mm_set1_pd(-0.0);
    return {_mm_andnot_pd(sign, a.low), _mm_andnot_pd(sign, a.high)};
}
LANES_FUNCTION bool IsAnyAbove(Lanes a, Lanes limit) {
    return _mm_movemask_pd(_mm_or_pd(_mm_cmpgt_pd(a.low, limit.low), _mm_cmpgt_pd(a.high, limit.high))) != 0;
}
LANES_FUNCTION Lanes FromIntegers(IntLanes a) {
    return {_mm_cvtepi32_pd(a), _mm_cvtepi32_pd(_mm_unpackhi_epi64(a, a))};
}

struct RoundedLanes {
    IntLanes integers;
    Lanes values;
};

/// For magnitudes below 2^31.
LANES_FUNCTION RoundedLanes RoundToNearest(Lanes a) {
    const IntLanes integers = _mm_unpacklo_epi64(_mm_cvtpd_epi32(a.low), _mm_cvtpd_epi32(a.high));
    return {integers, FromIntegers(integers)};
}
LANES_FUNCTION IntLanes LowBytes(IntLanes a) {
    return _mm_and_si128(a, _mm_set1_epi32(0xFF));
}
/// Four colour pixels, one per argument. Values lie within 0 to 255.
LANES_FUNCTION void StoreColors(Color* pixels, IntLanes a, IntLanes b, IntLanes c, IntLanes d) {
    const __m128i bytes = _mm_packus_epi16(_mm_packs_epi32(a, b), _mm_packs_epi32(c, d));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(pixels), bytes);
}
/// Four grey pixels. Values lie within 0 to 255.
LANES_FUNCTION void StoreGreys(Color* pixels, IntLanes a) {
    const __m128i twice = _mm_or_si128(a, _mm_slli_epi32(a, 8));
    const __m128i opaque = _mm_or_si128(_mm_slli_epi32(a, 16), _mm_set1_epi32(static_cast<int>(0xFF000000)));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(pixels), _mm_or_si128(twice, opaque));
}

/// Eight neighbouring channels as two times four lanes.
struct WideLanes {
    Lanes low;
    Lanes high;
};

LANES_FUNCTION __m128i LoadBits(const void* bits) {
    return _mm_loadu_si128(static_cast<const __m128i*>(bits));
}
LANES_FUNCTION WideLanes FromWords(__m128i words) {
    const __m128i zero = _mm_setzero_si128();
    return {FromIntegers(_mm_unpacklo_epi16(words, zero)), FromIntegers(_mm_unpackhi_epi16(words, zero))};
}
LANES_FUNCTION WideLanes FromSignedWords(__m128i words) {
    // The word in the upper half of 32 bits, moved down with its sign.
    return {FromIntegers(_mm_srai_epi32(_mm_unpacklo_epi16(words, words), 16)),
            FromIntegers(_mm_srai_epi32(_mm_unpackhi_epi16(words, words), 16))};
}
LANES_FUNCTION WideLanes Widen(const std::uint8_t* channels) {
    const __m128i bytes = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(channels));
    return FromWords(_mm_unpacklo_epi8(bytes, _mm_setzero_si128()));
}
LANES_FUNCTION WideLanes Widen(const std::int8_t* channels) {
    const __m128i bytes = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(channels));
    return FromSignedWords(_mm_srai_epi16(_mm_unpacklo_epi8(bytes, bytes), 8));
}
LANES_FUNCTION WideLanes Widen(const std::uint16_t* channels) {
    return FromWords(LoadBits(channels));
}
LANES_FUNCTION WideLanes Widen(const std::int16_t* channels) {
    return FromSignedWords(LoadBits(channels));
}
LANES_FUNCTION WideLanes Widen(const std::int32_t* channels) {
    return {FromIntegers(LoadBits(channels)), FromIntegers(LoadBits(channels + 4))};
}
LANES_FUNCTION Lanes FromFloats(const float* channels) {
    const __m128 floats = _mm_loadu_ps(channels);
    return {_mm_cvtps_pd(floats), _mm_cvtps_pd(_mm_movehl_ps(floats, floats))};
}
LANES_FUNCTION WideLanes Widen(const float* channels) {
    return {FromFloats(channels), FromFloats(channels + 4)};
}

} // namespace
} // namespace Quorvex::Platform::Video::Software
