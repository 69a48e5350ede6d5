// Sixteen words of 16 bits at once, as two rows of eight that do not mix, for processors with AVX2. Included by a
// source file of its own.

#include "codecs/jpg/ColorConversion.h"

#include <immintrin.h>

// A compiler inlines a function only into one that has all its instructions.
#define LANES_TARGET __attribute__((target("avx2")))
#define LANES_FUNCTION __attribute__((target("avx2"), always_inline)) inline
#define LANES_SET Avx2

namespace ET::Img::Jpg {
namespace {

using Words = __m256i;
/// How many rows of eight words lie side by side.
constexpr std::size_t rowsAtOnce = 2;

inline bool IsSupported() {
    return __builtin_cpu_supports("avx2") != 0;
}

LANES_FUNCTION Words Broadcast(int value) {
    return _mm256_set1_epi16(static_cast<short>(value));
}
LANES_FUNCTION Words BroadcastPairSums(int value) {
    return _mm256_set1_epi32(value);
}
LANES_FUNCTION __m128i LoadRow(const std::int16_t* words) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(words));
}
/// The same eight words for all rows.
LANES_FUNCTION Words LoadForAll(const std::int16_t* words) {
    return _mm256_broadcastsi128_si256(LoadRow(words));
}
LANES_FUNCTION Words LoadRows(const std::int16_t* first, const std::int16_t* second) {
    return _mm256_inserti128_si256(_mm256_castsi128_si256(LoadRow(first)), LoadRow(second), 1);
}
LANES_FUNCTION void StoreRows(std::int16_t* first, std::int16_t* second, Words words) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(first), _mm256_castsi256_si128(words));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(second), _mm256_extracti128_si256(words, 1));
}
LANES_FUNCTION bool AreZero(Words words) {
    return _mm256_testz_si256(words, words) != 0;
}
LANES_FUNCTION Words Or(Words a, Words b) {
    return _mm256_or_si256(a, b);
}
LANES_FUNCTION Words WithoutFirstOfRow(Words a) {
    return _mm256_srli_si256(a, 2);
}
LANES_FUNCTION Words FirstOfRow(Words a) {
    a = _mm256_shufflelo_epi16(a, 0);
    return _mm256_unpacklo_epi64(a, a);
}

LANES_FUNCTION Words Add(Words a, Words b) {
    return _mm256_add_epi16(a, b);
}
LANES_FUNCTION Words AddSaturated(Words a, Words b) {
    return _mm256_adds_epi16(a, b);
}
LANES_FUNCTION Words SubtractSaturated(Words a, Words b) {
    return _mm256_subs_epi16(a, b);
}
LANES_FUNCTION Words Multiply(Words a, Words b) {
    return _mm256_mullo_epi16(a, b);
}
LANES_FUNCTION Words MultiplyHigh(Words a, Words b) {
    return _mm256_mulhi_epi16(a, b);
}
LANES_FUNCTION Words MultiplyPairs(Words a, Words b) {
    return _mm256_madd_epi16(a, b);
}
LANES_FUNCTION Words AddPairSums(Words a, Words b) {
    return _mm256_add_epi32(a, b);
}
LANES_FUNCTION Words SubtractPairSums(Words a, Words b) {
    return _mm256_sub_epi32(a, b);
}
template <int bits>
LANES_FUNCTION Words ShiftPairSums(Words a) {
    return _mm256_srai_epi32(a, bits);
}
template <int bits>
LANES_FUNCTION Words ShiftRight(Words a) {
    return _mm256_srai_epi16(a, bits);
}
template <int bits>
LANES_FUNCTION Words ShiftLeft(Words a) {
    return _mm256_slli_epi16(a, bits);
}
LANES_FUNCTION Words Minimum(Words a, Words b) {
    return _mm256_min_epi16(a, b);
}
LANES_FUNCTION Words Maximum(Words a, Words b) {
    return _mm256_max_epi16(a, b);
}

/// Words 0 2 1 3 of each half of a row.
LANES_FUNCTION Words SwapMiddleOfHalves(Words a) {
    constexpr int order = _MM_SHUFFLE(3, 1, 2, 0);
    return _mm256_shufflehi_epi16(_mm256_shufflelo_epi16(a, order), order);
}
template <int third, int second, int first, int zeroth>
LANES_FUNCTION Words ShufflePairs(Words a) {
    return _mm256_shuffle_epi32(a, _MM_SHUFFLE(third, second, first, zeroth));
}
/// Eight sums of pairs to the words of a row.
LANES_FUNCTION Words PackPairSums(Words front, Words back) {
    return _mm256_packs_epi32(front, back);
}

/// A row of eight words, each twice, as two rows; of which PART.
LANES_FUNCTION Words LoadReplicated(const std::int16_t* row, std::size_t) {
    const __m128i words = LoadRow(row);
    return _mm256_inserti128_si256(_mm256_castsi128_si256(_mm_unpacklo_epi16(words, words)),
                                   _mm_unpackhi_epi16(words, words), 1);
}

/// Pixels of channels within 0 and 255 or limited to it, eight for each row.
LANES_FUNCTION void StorePixels(Words blue, Words green, Words red, Pixel* first, Pixel* second) {
    const Words opaque = _mm256_set1_epi8(-1);
    const Words low = _mm256_unpacklo_epi8(_mm256_packus_epi16(blue, blue), _mm256_packus_epi16(green, green));
    const Words high = _mm256_unpacklo_epi8(_mm256_packus_epi16(red, red), opaque);
    const Words left = _mm256_unpacklo_epi16(low, high), right = _mm256_unpackhi_epi16(low, high);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(first), _mm256_permute2x128_si256(left, right, 0x20));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(second), _mm256_permute2x128_si256(left, right, 0x31));
}

} // namespace
} // namespace ET::Img::Jpg
