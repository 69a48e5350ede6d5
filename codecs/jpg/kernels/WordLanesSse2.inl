// Eight words of 16 bits at once, which every x86 processor of 64 bits has. Included by a source file of its own.

#include "codecs/jpg/ColorConversion.h"

#include <emmintrin.h>

// A compiler inlines a function only into one that has all its instructions.
#define LANES_TARGET __attribute__((target("sse2")))
#define LANES_FUNCTION __attribute__((target("sse2"), always_inline)) inline
#define LANES_SET Sse2

namespace ET::Img::Jpg {
namespace {

using Words = __m128i;
/// How many rows of eight words lie side by side.
constexpr std::size_t rowsAtOnce = 1;

inline bool IsSupported() {
    return __builtin_cpu_supports("sse2") != 0;
}

LANES_FUNCTION Words Broadcast(int value) {
    return _mm_set1_epi16(static_cast<short>(value));
}
LANES_FUNCTION Words BroadcastPairSums(int value) {
    return _mm_set1_epi32(value);
}
/// The same eight words for all rows.
LANES_FUNCTION Words LoadForAll(const std::int16_t* words) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(words));
}
LANES_FUNCTION Words LoadRows(const std::int16_t* first, const std::int16_t*) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(first));
}
LANES_FUNCTION void StoreRows(std::int16_t* first, std::int16_t*, Words words) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(first), words);
}
LANES_FUNCTION bool AreZero(Words words) {
    return _mm_movemask_epi8(_mm_cmpeq_epi8(words, _mm_setzero_si128())) == 0xFFFF;
}
LANES_FUNCTION Words Or(Words a, Words b) {
    return _mm_or_si128(a, b);
}
LANES_FUNCTION Words WithoutFirstOfRow(Words a) {
    return _mm_srli_si128(a, 2);
}
LANES_FUNCTION Words FirstOfRow(Words a) {
    a = _mm_shufflelo_epi16(a, 0);
    return _mm_unpacklo_epi64(a, a);
}

LANES_FUNCTION Words Add(Words a, Words b) {
    return _mm_add_epi16(a, b);
}
LANES_FUNCTION Words AddSaturated(Words a, Words b) {
    return _mm_adds_epi16(a, b);
}
LANES_FUNCTION Words SubtractSaturated(Words a, Words b) {
    return _mm_subs_epi16(a, b);
}
LANES_FUNCTION Words Multiply(Words a, Words b) {
    return _mm_mullo_epi16(a, b);
}
LANES_FUNCTION Words MultiplyHigh(Words a, Words b) {
    return _mm_mulhi_epi16(a, b);
}
LANES_FUNCTION Words MultiplyPairs(Words a, Words b) {
    return _mm_madd_epi16(a, b);
}
LANES_FUNCTION Words AddPairSums(Words a, Words b) {
    return _mm_add_epi32(a, b);
}
LANES_FUNCTION Words SubtractPairSums(Words a, Words b) {
    return _mm_sub_epi32(a, b);
}
template <int bits>
LANES_FUNCTION Words ShiftPairSums(Words a) {
    return _mm_srai_epi32(a, bits);
}
template <int bits>
LANES_FUNCTION Words ShiftRight(Words a) {
    return _mm_srai_epi16(a, bits);
}
template <int bits>
LANES_FUNCTION Words ShiftLeft(Words a) {
    return _mm_slli_epi16(a, bits);
}
LANES_FUNCTION Words Minimum(Words a, Words b) {
    return _mm_min_epi16(a, b);
}
LANES_FUNCTION Words Maximum(Words a, Words b) {
    return _mm_max_epi16(a, b);
}

/// Words 0 2 1 3 of each half of a row.
LANES_FUNCTION Words SwapMiddleOfHalves(Words a) {
    constexpr int order = _MM_SHUFFLE(3, 1, 2, 0);
    return _mm_shufflehi_epi16(_mm_shufflelo_epi16(a, order), order);
}
template <int third, int second, int first, int zeroth>
LANES_FUNCTION Words ShufflePairs(Words a) {
    return _mm_shuffle_epi32(a, _MM_SHUFFLE(third, second, first, zeroth));
}
/// Eight sums of pairs to the words of a row.
LANES_FUNCTION Words PackPairSums(Words front, Words back) {
    return _mm_packs_epi32(front, back);
}

/// A row of eight words, each twice, as two rows; of which PART.
LANES_FUNCTION Words LoadReplicated(const std::int16_t* row, std::size_t part) {
    const Words words = LoadForAll(row);
    return part == 0 ? _mm_unpacklo_epi16(words, words) : _mm_unpackhi_epi16(words, words);
}

/// Pixels of channels within 0 and 255 or limited to it, eight for each row.
LANES_FUNCTION void StorePixels(Words blue, Words green, Words red, Pixel* first, Pixel*) {
    const Words opaque = _mm_set1_epi8(-1);
    const Words low = _mm_unpacklo_epi8(_mm_packus_epi16(blue, blue), _mm_packus_epi16(green, green));
    const Words high = _mm_unpacklo_epi8(_mm_packus_epi16(red, red), opaque);
    auto* const target = reinterpret_cast<__m128i*>(first);
    _mm_storeu_si128(target, _mm_unpacklo_epi16(low, high));
    _mm_storeu_si128(target + 1, _mm_unpackhi_epi16(low, high));
}

} // namespace
} // namespace ET::Img::Jpg
