#pragma once

#include "codecs/tif/Layout.h"

#include <bit>
#include <cstring>
#include <limits>
#include <type_traits>

namespace ET::Img::Tif {

/// The unsigned number of a channel's size.
template <class Channel>
using WordOf =
    std::conditional_t<sizeof(Channel) == 1, std::uint8_t,
                       std::conditional_t<sizeof(Channel) == 2, std::uint16_t,
                                          std::conditional_t<sizeof(Channel) == 4, std::uint32_t, std::uint64_t>>>;

/// A number of the given bits in the range of all bits of the word, rounded to nearest: 0 stays 0, and the largest
/// becomes the largest. (2^t - 1) / (2^n - 1) is 2^(t-n) and a rest; no product leaves the word's t bits.
template <class Word>
Word Widened(Word value, std::uint32_t bits) {
    const std::uint32_t added = 8 * sizeof(Word) - bits;
    const std::uint64_t largest = (std::uint64_t{1} << bits) - 1;
    const std::uint64_t rest = (std::uint64_t{value} * ((std::uint64_t{1} << added) - 1) + largest / 2) / largest;
    return static_cast<Word>((std::uint64_t{value} << added) + rest);
}

/// IEEE 754 binary16.
float FloatOfHalf(std::uint32_t half);
/// A sign, 7 bits of exponent with the bias 63, and 16 of significand.
float FloatOf24Bits(std::uint32_t number);

/// Turns samples in the low bits of words into channels.
template <class Channel>
class SampleFinish {
public:
    using Word = WordOf<Channel>;

    SampleFinish(SampleFormat format, std::uint32_t bits) : m_bits(bits), m_kernel(KernelFor(format, bits)) {
        if (m_kernel == ByTable) {
            m_table.resize(std::size_t{1} << bits);
            for (std::size_t i = 0; i < m_table.size(); ++i)
                m_table[i] = std::bit_cast<Channel>(Widened(static_cast<Word>(i), bits));
        }
    }

    /// Whether words are channels already.
    bool IsIdentity() const { return m_kernel == AsIs; }
    void Run(const Word* words, Channel* channels, std::size_t count) const { m_kernel(*this, words, channels, count); }

private:
    using Kernel = void (*)(const SampleFinish& self, const Word* words, Channel* channels, std::size_t count);
    static constexpr std::uint32_t largestTableBits = 8;

    static Kernel KernelFor(SampleFormat format, std::uint32_t bits) {
        if (bits == 8 * sizeof(Channel))
            return AsIs;
        if constexpr (std::is_floating_point_v<Channel>)
            return bits == 16 ? FromFloat<FloatOfHalf> : FromFloat<FloatOf24Bits>;
        else if (format == SampleFormat::Signed)
            return Shifted;
        return bits <= largestTableBits ? ByTable : Computed;
    }

    static void AsIs(const SampleFinish&, const Word* words, Channel* channels, std::size_t count) {
        if (count != 0)
            std::memcpy(channels, words, count * sizeof(Channel));
    }

    template <float (*convert)(std::uint32_t)>
    static void FromFloat(const SampleFinish&, const Word* words, Channel* channels, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i)
            channels[i] = static_cast<Channel>(convert(static_cast<std::uint32_t>(words[i])));
    }

    /// Zero stays where it is, and the smallest becomes the smallest.
    static void Shifted(const SampleFinish& self, const Word* words, Channel* channels, std::size_t count) {
        const std::uint32_t shift = 8 * sizeof(Word) - self.m_bits;
        for (std::size_t i = 0; i < count; ++i)
            channels[i] = std::bit_cast<Channel>(static_cast<Word>(words[i] << shift));
    }

    static void ByTable(const SampleFinish& self, const Word* words, Channel* channels, std::size_t count) {
        const Channel* const table = self.m_table.data();
        for (std::size_t i = 0; i < count; ++i)
            channels[i] = table[words[i]];
    }

    static void Computed(const SampleFinish& self, const Word* words, Channel* channels, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i)
            channels[i] = std::bit_cast<Channel>(Widened(words[i], self.m_bits));
    }

    std::uint32_t m_bits;
    std::vector<Channel> m_table;
    Kernel m_kernel;
};

} // namespace ET::Img::Tif
