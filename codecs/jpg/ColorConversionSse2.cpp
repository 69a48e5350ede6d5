#include "codecs/jpg/ColorConversion.h"

#if defined(__x86_64__) || defined(__i386__)
#include <emmintrin.h>

namespace ET::Img::Jpg::YCbCrForms {

namespace {

#define JPG_SSE2 __attribute__((target("sse2")))

JPG_SSE2 inline __m128i Load(const std::int16_t* samples) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(samples));
}

JPG_SSE2 inline __m128i Times(__m128i samples, int factor) {
    return _mm_mullo_epi16(samples, _mm_set1_epi16(static_cast<short>(factor)));
}

JPG_SSE2 void RunSse2(const std::int16_t* y, const std::int16_t* cb, const std::int16_t* cr, Pixel* pixels) {
    // In units of 1/128: the level shift and a half.
    const __m128i base = _mm_add_epi16(_mm_slli_epi16(Load(y), 7), _mm_set1_epi16(0x4040));
    const __m128i blueness = Load(cb), redness = Load(cr);
    const __m128i blue = _mm_adds_epi16(base, Times(blueness, 227));
    // Together first: each by itself could leave 16 bits where the sum comes back.
    const __m128i green = _mm_subs_epi16(base, _mm_add_epi16(Times(blueness, 44), Times(redness, 91)));
    const __m128i red = _mm_adds_epi16(base, Times(redness, 179));
    const __m128i blues = _mm_packus_epi16(_mm_srai_epi16(blue, 7), _mm_setzero_si128());
    const __m128i greens = _mm_packus_epi16(_mm_srai_epi16(green, 7), _mm_setzero_si128());
    const __m128i reds = _mm_packus_epi16(_mm_srai_epi16(red, 7), _mm_setzero_si128());
    const __m128i low = _mm_unpacklo_epi8(blues, greens);
    const __m128i high = _mm_unpacklo_epi8(reds, _mm_set1_epi8(-1));
    auto* const target = reinterpret_cast<__m128i*>(pixels);
    _mm_storeu_si128(target, _mm_unpacklo_epi16(low, high));
    _mm_storeu_si128(target + 1, _mm_unpackhi_epi16(low, high));
}

} // namespace

YCbCrRow Sse2() {
    return __builtin_cpu_supports("sse2") ? RunSse2 : nullptr;
}

} // namespace ET::Img::Jpg::YCbCrForms

#else

namespace ET::Img::Jpg::YCbCrForms {

YCbCrRow Sse2() {
    return nullptr;
}

} // namespace ET::Img::Jpg::YCbCrForms

#endif
