#include "codecs/bmp/ExpandBgr.h"

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#endif

namespace ET::Img {

namespace ExpandBgrForms {

using Pixel = Quorvex::Data::ColorBGRA<std::uint8_t>;

void Plain(const std::uint8_t* source, Pixel* destination, std::uint32_t count) {
    for (std::uint32_t i = 0; i < count; ++i, source += 3)
        destination[i] = {source[0], source[1], source[2], 255};
}

#if defined(__x86_64__) || defined(__i386__)

namespace {

// Each group of four pixels takes 12 of the 16 bytes that are loaded, so the last groups of a row are left to the plain
// form: a load must not leave the row.
constexpr std::uint32_t pixelsBehindLoad = 2;

__attribute__((target("ssse3"))) void RunSsse3(const std::uint8_t* source, Pixel* destination, std::uint32_t count) {
    const __m128i spread = _mm_setr_epi8(0, 1, 2, -1, 3, 4, 5, -1, 6, 7, 8, -1, 9, 10, 11, -1);
    const __m128i opaque = _mm_set1_epi32(static_cast<int>(0xFF000000));
    std::uint32_t i = 0;
    for (; i + 4 + pixelsBehindLoad <= count; i += 4) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(source + 3 * std::size_t(i)));
        const __m128i pixels = _mm_or_si128(_mm_shuffle_epi8(bytes, spread), opaque);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(destination + i), pixels);
    }
    Plain(source + 3 * std::size_t(i), destination + i, count - i);
}

__attribute__((target("avx2"))) void RunAvx2(const std::uint8_t* source, Pixel* destination, std::uint32_t count) {
    const __m256i spread = _mm256_setr_epi8(0, 1, 2, -1, 3, 4, 5, -1, 6, 7, 8, -1, 9, 10, 11, -1, //
                                            0, 1, 2, -1, 3, 4, 5, -1, 6, 7, 8, -1, 9, 10, 11, -1);
    const __m256i opaque = _mm256_set1_epi32(static_cast<int>(0xFF000000));
    std::uint32_t i = 0;
    for (; i + 8 + pixelsBehindLoad <= count; i += 8) {
        const std::uint8_t* bytes = source + 3 * std::size_t(i);
        const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
        const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + 12));
        const __m256i both = _mm256_inserti128_si256(_mm256_castsi128_si256(low), high, 1);
        const __m256i pixels = _mm256_or_si256(_mm256_shuffle_epi8(both, spread), opaque);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(destination + i), pixels);
    }
    Plain(source + 3 * std::size_t(i), destination + i, count - i);
}

} // namespace

Form Ssse3() {
    return __builtin_cpu_supports("ssse3") ? RunSsse3 : nullptr;
}

Form Avx2() {
    return __builtin_cpu_supports("avx2") ? RunAvx2 : nullptr;
}

#else

Form Ssse3() {
    return nullptr;
}

Form Avx2() {
    return nullptr;
}

#endif

} // namespace ExpandBgrForms

void ExpandBgr(const std::uint8_t* source, Quorvex::Data::ColorBGRA<std::uint8_t>* destination, std::uint32_t count) {
    static const ExpandBgrForms::Form fastest = [] {
        if (const ExpandBgrForms::Form form = ExpandBgrForms::Avx2())
            return form;
        if (const ExpandBgrForms::Form form = ExpandBgrForms::Ssse3())
            return form;
        return ExpandBgrForms::Form(ExpandBgrForms::Plain);
    }();
    fastest(source, destination, count);
}

} // namespace ET::Img
