#pragma once

#include <cstddef>
#include <cstdint>

namespace ET::Img::Tif {

/// Undoes horizontal differencing (TIFF 6.0, section 14) on a row whose samples lie stride apart from those of the
/// pixels beside them: sums count modulo 2^bits.
template <class Word>
void SumDifferences(Word* words, std::size_t count, std::size_t stride, std::uint32_t bits) {
    for (std::size_t i = stride; i < count; ++i)
        words[i] = static_cast<Word>(words[i] + words[i - stride]);
    if (bits < 8 * sizeof(Word)) {
        const auto mask = static_cast<Word>((Word{1} << bits) - 1);
        for (std::size_t i = 0; i < count; ++i)
            words[i] = static_cast<Word>(words[i] & mask);
    }
}

/// Undoes the floating point predictor (TIFF Technical Note 3) on the bytes of a row: the bytes of all samples, the
/// highest first, stand apart, and are differences to those stride bytes before. In place, up to words of the samples.
template <class Word>
void SumFloatDifferences(std::uint8_t* bytes, Word* words, std::size_t count, std::size_t stride, std::uint32_t bits) {
    const std::size_t sampleBytes = bits / 8;
    for (std::size_t i = stride; i < count * sampleBytes; ++i)
        bytes[i] = static_cast<std::uint8_t>(bytes[i] + bytes[i - stride]);
    for (std::size_t i = 0; i < count; ++i) {
        Word word = 0;
        for (std::size_t k = 0; k < sampleBytes; ++k)
            word = static_cast<Word>(word << 8 | bytes[k * count + i]);
        words[i] = word;
    }
}

} // namespace ET::Img::Tif
