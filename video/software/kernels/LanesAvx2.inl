// Four 64-bit floats at once for processors with AVX2. Included by a source file of its own.

#include <cstdint>
#include <immintrin.h>

// A compiler inlines a function only into one that has all its instructions.
#define LANES_TARGET __attribute__((target("avx2")))
#define LANES_FUNCTION __attribute__((target("avx2"), always_inline)) inline

namespace Quorvex::Platform::Video::Software {
namespace {

using Lanes = __m256d;
using IntLanes = __m128i;

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
LANES_FUNCTION IntLanes ToNearest(Lanes a) {
    return _mm256_cvtpd_epi32(a);
}
LANES_FUNCTION Lanes FromIntegers(IntLanes a) {
    return _mm256_cvtepi32_pd(a);
}

/// Eight neighbouring channels as two times four lanes.
struct WideLanes {
    Lanes low;
    Lanes high;
};

LANES_FUNCTION WideLanes FromIntegers(__m256i a) {
    return {FromIntegers(_mm256_castsi256_si128(a)), FromIntegers(_mm256_extracti128_si256(a, 1))};
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
    return {FromIntegers(LoadBits(channels)), FromIntegers(LoadBits(channels + 4))};
}
LANES_FUNCTION WideLanes Widen(const float* channels) {
    return {_mm256_cvtps_pd(_mm_loadu_ps(channels)), _mm256_cvtps_pd(_mm_loadu_ps(channels + 4))};
}

} // namespace
} // namespace Quorvex::Platform::Video::Software

// The packing of bytes needs no more than every processor of the kind has.
#include "video/software/kernels/LanesPacking.inl"
