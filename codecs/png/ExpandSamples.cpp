#include "codecs/png/ExpandSamples.h"

#include "data/ColorBGRA.h"

#include <array>
#include <limits>
#include <type_traits>

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#endif

namespace ET::Img::Png {

namespace {

template <class Channel>
Channel SampleAt(const std::uint8_t* source, std::uint32_t index) {
    if constexpr (sizeof(Channel) == 1)
        return source[index];
    else
        return static_cast<Channel>(source[2 * index] << 8 | source[2 * index + 1]);
}

template <class Channel, std::uint32_t channels>
void ExpandPlain(const std::uint8_t* source, void* destination, std::uint32_t count) {
    constexpr bool isColor = channels >= 3, hasAlpha = channels % 2 == 0;
    auto* pixels = static_cast<Quorvex::Data::ColorBGRA<Channel>*>(destination);
    for (std::uint32_t i = 0; i < count; ++i, source += channels * sizeof(Channel)) {
        pixels[i].blue = SampleAt<Channel>(source, isColor ? 2 : 0);
        pixels[i].green = SampleAt<Channel>(source, isColor ? 1 : 0);
        pixels[i].red = SampleAt<Channel>(source, 0);
        pixels[i].alpha = hasAlpha ? SampleAt<Channel>(source, channels - 1) : std::numeric_limits<Channel>::max();
    }
}

#if defined(__x86_64__) || defined(__i386__)

constexpr std::uint32_t vectorBytes = 16;

/// Which byte of the source each byte of a vector of pixels takes. The top bit stands for none.
template <class Channel, std::uint32_t channels>
constexpr std::array<std::uint8_t, vectorBytes> SourceBytes() {
    constexpr std::uint32_t size = sizeof(Channel);
    std::array<std::uint8_t, vectorBytes> bytes{};
    for (std::uint32_t i = 0; i < vectorBytes; ++i) {
        const std::uint32_t pixel = i / (4 * size), channel = i / size % 4;
        // These processors keep the low byte first.
        const std::uint32_t byte = size - 1 - i % size;
        std::uint32_t sample = channels >= 3 ? 2 - channel : 0;
        if (channel == 3)
            sample = channels - 1;
        bytes[i] = channel == 3 && channels % 2 != 0
                       ? std::uint8_t(0x80)
                       : static_cast<std::uint8_t>((pixel * channels + sample) * size + byte);
    }
    return bytes;
}

template <class Channel, std::uint32_t channels>
__attribute__((target("ssse3"))) void ExpandSsse3(const std::uint8_t* source, void* destination, std::uint32_t count) {
    static constexpr auto sourceBytes = SourceBytes<Channel, channels>();
    constexpr std::uint32_t pixelBytes = 4 * sizeof(Channel), step = vectorBytes / pixelBytes;
    const __m128i spread = _mm_loadu_si128(reinterpret_cast<const __m128i*>(sourceBytes.data()));
    // The bytes that have no source are those of an opaque alpha.
    const __m128i opaque = _mm_cmpgt_epi8(_mm_setzero_si128(), spread);
    auto* bytes = static_cast<std::uint8_t*>(destination);
    std::uint32_t i = 0;
    for (; i + step <= count; i += step, source += step * channels * sizeof(Channel), bytes += vectorBytes) {
        const __m128i samples = _mm_loadu_si128(reinterpret_cast<const __m128i*>(source));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(bytes), _mm_or_si128(_mm_shuffle_epi8(samples, spread), opaque));
    }
    ExpandPlain<Channel, channels>(source, bytes, count - i);
}

#endif

template <std::uint32_t channels>
ExpandForm PlainOf(std::uint32_t sampleBytes) {
    return sampleBytes == 1 ? ExpandPlain<std::uint8_t, channels> : ExpandPlain<std::uint16_t, channels>;
}

} // namespace

namespace ExpandForms {

ExpandForm Plain(std::uint32_t channels, std::uint32_t sampleBytes) {
    switch (channels) {
    case 1:
        return PlainOf<1>(sampleBytes);
    case 2:
        return PlainOf<2>(sampleBytes);
    case 3:
        return PlainOf<3>(sampleBytes);
    default:
        return PlainOf<4>(sampleBytes);
    }
}

#if defined(__x86_64__) || defined(__i386__)

ExpandForm Ssse3(std::uint32_t channels, std::uint32_t sampleBytes) {
    static constexpr ExpandForm forms[] = {
        ExpandSsse3<std::uint8_t, 1>,  ExpandSsse3<std::uint8_t, 2>,  ExpandSsse3<std::uint8_t, 3>,
        ExpandSsse3<std::uint8_t, 4>,  ExpandSsse3<std::uint16_t, 1>, ExpandSsse3<std::uint16_t, 2>,
        ExpandSsse3<std::uint16_t, 3>, ExpandSsse3<std::uint16_t, 4>,
    };
    return __builtin_cpu_supports("ssse3") ? forms[(sampleBytes - 1) * 4 + channels - 1] : nullptr;
}

#else

ExpandForm Ssse3(std::uint32_t, std::uint32_t) {
    return nullptr;
}

#endif

} // namespace ExpandForms

ExpandForm ChooseExpandForm(std::uint32_t channels, std::uint32_t sampleBytes) {
    if (const ExpandForm form = ExpandForms::Ssse3(channels, sampleBytes))
        return form;
    return ExpandForms::Plain(channels, sampleBytes);
}

} // namespace ET::Img::Png
