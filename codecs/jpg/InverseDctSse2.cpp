#include "codecs/jpg/InverseDct.h"

#if defined(__x86_64__) || defined(__i386__)

#include <array>
#include <cmath>
#include <emmintrin.h>

namespace ET::Img::Jpg::InverseDctForms {

// The fast inverse transform of Intel's application note AP-922: a row stage of multiplications and additions of pairs,
// whose factors already hold what the column stage would scale its rows by, and a column stage with tangents alone.

namespace {

#define JPG_SSE2 __attribute__((target("sse2")))

// The row stage keeps 3 bits below 1; the column stage takes away these and the two bits of a quarter.
constexpr int rowShift = 12;
constexpr int columnShift = 5;

constexpr double pi = 3.14159265358979323846;

/// Rows k and 8 - k are scaled alike; rows 0 and 4, which no tangent leads to, by the cosine of a quarter.
enum RowClass { Rows04, Rows17, Rows26, Rows35, RowClassCount };

struct RowFactors {
    // Each vector holds four pairs, one per result. Even inputs: (0, 2) and (4, 6); odd ones: (1, 3) and (5, 7).
    alignas(16) std::int16_t even02[8];
    alignas(16) std::int16_t even46[8];
    alignas(16) std::int16_t odd13[8];
    alignas(16) std::int16_t odd57[8];
};

std::int16_t Factor(int input, int result, double scale) {
    // The cosine of input 0 stands for the root of a half that the definition gives it.
    const double cosine = input == 0 ? std::cos(pi / 4) : std::cos((2 * result + 1) * input * pi / 16);
    return static_cast<std::int16_t>(std::lround(cosine * scale * 32768.0));
}

RowFactors MakeFactors(double scale) {
    RowFactors factors;
    for (int result = 0; result < 4; ++result) {
        for (int second = 0; second < 2; ++second) {
            const int place = 2 * result + second;
            factors.even02[place] = Factor(2 * second, result, scale);
            factors.even46[place] = Factor(4 + 2 * second, result, scale);
            factors.odd13[place] = Factor(1 + 2 * second, result, scale);
            factors.odd57[place] = Factor(5 + 2 * second, result, scale);
        }
    }
    return factors;
}

const std::array<RowFactors, RowClassCount>& GetFactors() {
    static const std::array<RowFactors, RowClassCount> factors{
        MakeFactors(std::cos(4 * pi / 16)), MakeFactors(std::cos(1 * pi / 16)), MakeFactors(std::cos(2 * pi / 16)),
        MakeFactors(std::cos(3 * pi / 16))};
    return factors;
}

JPG_SSE2 inline __m128i Load(const std::int16_t* values) {
    return _mm_load_si128(reinterpret_cast<const __m128i*>(values));
}

JPG_SSE2 inline __m128i TransformRow(__m128i row, const RowFactors& factors, __m128i rounding) {
    // Inputs 0 2 4 6 | 1 3 5 7.
    row = _mm_shufflelo_epi16(row, _MM_SHUFFLE(3, 1, 2, 0));
    row = _mm_shufflehi_epi16(row, _MM_SHUFFLE(3, 1, 2, 0));
    row = _mm_shuffle_epi32(row, _MM_SHUFFLE(3, 1, 2, 0));
    const __m128i even =
        _mm_add_epi32(_mm_add_epi32(_mm_madd_epi16(_mm_shuffle_epi32(row, 0x00), Load(factors.even02)),
                                    _mm_madd_epi16(_mm_shuffle_epi32(row, 0x55), Load(factors.even46))),
                      rounding);
    const __m128i odd = _mm_add_epi32(_mm_madd_epi16(_mm_shuffle_epi32(row, 0xAA), Load(factors.odd13)),
                                      _mm_madd_epi16(_mm_shuffle_epi32(row, 0xFF), Load(factors.odd57)));
    const __m128i front = _mm_srai_epi32(_mm_add_epi32(even, odd), rowShift);
    const __m128i back = _mm_srai_epi32(_mm_sub_epi32(even, odd), rowShift);
    return _mm_packs_epi32(front, _mm_shuffle_epi32(back, _MM_SHUFFLE(0, 1, 2, 3)));
}

/// The high half of a product with a fraction of 16 bits.
JPG_SSE2 inline __m128i Times(__m128i values, int fraction) {
    return _mm_mulhi_epi16(values, _mm_set1_epi16(static_cast<short>(fraction)));
}

JPG_SSE2 inline __m128i TimesTangent1(__m128i values) {
    return Times(values, 13036);
}
JPG_SSE2 inline __m128i TimesTangent2(__m128i values) {
    return Times(values, 27146);
}
/// The tangent is above a half, and the fraction what it has more than 1, below 0.
JPG_SSE2 inline __m128i TimesTangent3(__m128i values) {
    return _mm_adds_epi16(Times(values, -21746), values);
}
JPG_SSE2 inline __m128i TimesCosine4(__m128i values) {
    const __m128i half = Times(values, 23170);
    return _mm_adds_epi16(half, half);
}

JPG_SSE2 inline void StoreLimited(std::int16_t* row, __m128i samples) {
    samples = _mm_srai_epi16(samples, columnShift);
    samples = _mm_max_epi16(_mm_min_epi16(samples, _mm_set1_epi16(127)), _mm_set1_epi16(-128));
    _mm_store_si128(reinterpret_cast<__m128i*>(row), samples);
}

JPG_SSE2 inline void TransformColumns(const __m128i (&x)[8], std::int16_t* block) {
    const __m128i sum17 = _mm_adds_epi16(TimesTangent1(x[7]), x[1]);
    const __m128i difference17 = _mm_subs_epi16(TimesTangent1(x[1]), x[7]);
    const __m128i sum35 = _mm_adds_epi16(TimesTangent3(x[5]), x[3]);
    const __m128i difference35 = _mm_subs_epi16(TimesTangent3(x[3]), x[5]);
    const __m128i inner = _mm_subs_epi16(sum17, sum35);
    const __m128i outer = _mm_adds_epi16(difference17, difference35);
    const __m128i odd[4] = {_mm_adds_epi16(sum17, sum35), TimesCosine4(_mm_adds_epi16(inner, outer)),
                            TimesCosine4(_mm_subs_epi16(inner, outer)), _mm_subs_epi16(difference17, difference35)};

    const __m128i sum04 = _mm_adds_epi16(x[0], x[4]);
    const __m128i difference04 = _mm_subs_epi16(x[0], x[4]);
    const __m128i sum26 = _mm_adds_epi16(TimesTangent2(x[6]), x[2]);
    const __m128i difference26 = _mm_subs_epi16(TimesTangent2(x[2]), x[6]);
    const __m128i even[4] = {_mm_adds_epi16(sum04, sum26), _mm_adds_epi16(difference04, difference26),
                             _mm_subs_epi16(difference04, difference26), _mm_subs_epi16(sum04, sum26)};

    for (int i = 0; i < 4; ++i) {
        StoreLimited(block + 8 * i, _mm_adds_epi16(even[i], odd[i]));
        StoreLimited(block + 8 * (7 - i), _mm_subs_epi16(even[i], odd[i]));
    }
}

JPG_SSE2 void RunSse2(std::int16_t* block) {
    static const std::array<RowFactors, RowClassCount>& factors = GetFactors();
    static constexpr RowClass classes[8] = {Rows04, Rows17, Rows26, Rows35, Rows04, Rows35, Rows26, Rows17};
    const __m128i half = _mm_set1_epi32(1 << (rowShift - 1));
    // The first row reaches every sample of its column alike, so that it can bring the half of the column stage along.
    const __m128i bothHalves = _mm_set1_epi32((1 << (rowShift - 1)) + (1 << (columnShift - 1 + rowShift)));
    __m128i rows[8];
    for (int row = 0; row < 8; ++row)
        rows[row] = TransformRow(Load(block + 8 * row), factors[classes[row]], row == 0 ? bothHalves : half);
    TransformColumns(rows, block);
}

} // namespace

InverseDct Sse2() {
    return __builtin_cpu_supports("sse2") ? RunSse2 : nullptr;
}

} // namespace ET::Img::Jpg::InverseDctForms

#else

namespace ET::Img::Jpg::InverseDctForms {

InverseDct Sse2() {
    return nullptr;
}

} // namespace ET::Img::Jpg::InverseDctForms

#endif
