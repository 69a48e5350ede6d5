// From rounded levels to pixels, for x86 processors. Included by LanesSse2.inl and LanesAvx2.inl.

namespace Quorvex::Platform::Video::Software {
namespace {

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

} // namespace
} // namespace Quorvex::Platform::Video::Software
