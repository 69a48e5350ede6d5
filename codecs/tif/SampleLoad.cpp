#include "codecs/tif/SampleLoad.h"

#include <bit>
#include <cstring>

namespace ET::Img::Tif {

namespace {

/// Numbers as the processor stores them.
template <class Word>
void LoadNative(const std::uint8_t* bytes, Word* words, std::size_t count, std::uint32_t) {
    if (count != 0)
        std::memcpy(words, bytes, count * sizeof(Word));
}

template <class Word, ByteOrder order>
Word Composed(const std::uint8_t* bytes, std::uint32_t byteCount) {
    Word word = 0;
    for (std::uint32_t i = 0; i < byteCount; ++i)
        word = static_cast<Word>(word | Word{bytes[i]} << 8 * (order == ByteOrder::Little ? i : byteCount - 1 - i));
    return word;
}

/// Numbers of exactly the word's size, whose composition compilers know as a load and a swap.
template <class Word, ByteOrder order>
void LoadWords(const std::uint8_t* bytes, Word* words, std::size_t count, std::uint32_t) {
    for (std::size_t i = 0; i < count; ++i)
        words[i] = Composed<Word, order>(bytes + i * sizeof(Word), sizeof(Word));
}

template <class Word, ByteOrder order>
void LoadBytes(const std::uint8_t* bytes, Word* words, std::size_t count, std::uint32_t bits) {
    const std::uint32_t byteCount = bits / 8;
    for (std::size_t i = 0; i < count; ++i)
        words[i] = Composed<Word, order>(bytes + i * byteCount, byteCount);
}

/// Depths of which a byte holds several.
template <class Word, std::uint32_t bits>
void LoadFractions(const std::uint8_t* bytes, Word* words, std::size_t count, std::uint32_t) {
    constexpr std::uint32_t inByte = 8 / bits, mask = (1u << bits) - 1;
    std::size_t i = 0;
    for (; i + inByte <= count; i += inByte, ++bytes)
        for (std::uint32_t k = 0; k < inByte; ++k)
            words[i + k] = static_cast<Word>(*bytes >> (8 - bits - bits * k) & mask);
    for (std::uint32_t shift = 8 - bits; i < count; ++i, shift -= bits)
        words[i] = static_cast<Word>(*bytes >> shift & mask);
}

template <class Word>
void LoadBits(const std::uint8_t* bytes, Word* words, std::size_t count, std::uint32_t bits) {
    std::uint32_t left = 0; // Unread bits of the present byte.
    std::uint32_t byte = 0;
    for (std::size_t i = 0; i < count; ++i) {
        std::uint64_t value = 0;
        for (std::uint32_t needed = bits; needed != 0;) {
            if (left == 0) {
                byte = *bytes++;
                left = 8;
            }
            const std::uint32_t taken = needed < left ? needed : left;
            left -= taken;
            needed -= taken;
            value = value << taken | (byte >> left & ((1u << taken) - 1));
        }
        words[i] = static_cast<Word>(value);
    }
}

} // namespace

template <class Word>
SampleLoad<Word> GetSampleLoad(std::uint32_t bits, ByteOrder order) {
    constexpr ByteOrder native = std::endian::native == std::endian::little ? ByteOrder::Little : ByteOrder::Big;
    switch (bits) {
    case 1:
        return LoadFractions<Word, 1>;
    case 2:
        return LoadFractions<Word, 2>;
    case 4:
        return LoadFractions<Word, 4>;
    default:
        break;
    }
    if (bits % 8 != 0)
        return LoadBits<Word>;
    if (bits == 8 * sizeof(Word)) {
        if (sizeof(Word) == 1 || order == native)
            return LoadNative<Word>;
        return order == ByteOrder::Little ? LoadWords<Word, ByteOrder::Little> : LoadWords<Word, ByteOrder::Big>;
    }
    return order == ByteOrder::Little ? LoadBytes<Word, ByteOrder::Little> : LoadBytes<Word, ByteOrder::Big>;
}

template SampleLoad<std::uint8_t> GetSampleLoad(std::uint32_t, ByteOrder);
template SampleLoad<std::uint16_t> GetSampleLoad(std::uint32_t, ByteOrder);
template SampleLoad<std::uint32_t> GetSampleLoad(std::uint32_t, ByteOrder);
template SampleLoad<std::uint64_t> GetSampleLoad(std::uint32_t, ByteOrder);

} // namespace ET::Img::Tif
