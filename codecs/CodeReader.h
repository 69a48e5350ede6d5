#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace ET::Img {

/// Which bit of a byte is the first, and which bit of a code.
enum class BitOrder {
    LowFirst,     ///< The lowest of both.
    HighFirst,    ///< The highest of both.
    ReversedBytes ///< The lowest of a byte, but the highest of a code.
};

/// Codes of up to 16 bits out of bytes that somebody else owns. Behind the end there are zeros without limit; whoever
/// reads asks IsOverrun() after each code.
template <BitOrder order>
class CodeReader {
public:
    CodeReader(const std::uint8_t* source, std::size_t sourceSize) : m_next(source), m_end(source + sourceSize) {}

    /// 1 bit at least.
    std::uint32_t Peek(unsigned width) {
        if (m_count < width)
            Fill();
        if constexpr (order == BitOrder::LowFirst)
            return static_cast<std::uint32_t>(m_bits & ((std::uint64_t{1} << width) - 1));
        else
            return static_cast<std::uint32_t>(m_bits >> (64 - width));
    }
    /// At most as many bits as were peeked at.
    void Skip(unsigned width) {
        m_count -= width;
        if constexpr (order == BitOrder::LowFirst)
            m_bits >>= width;
        else
            m_bits <<= width;
    }
    std::uint32_t Read(unsigned width) {
        const std::uint32_t code = Peek(width);
        Skip(width);
        return code;
    }
    /// Skips what is left of a byte that was begun.
    void SkipToByte() { Skip(m_count % 8); }

    /// Whether there is a bit that was not taken.
    bool HasMore() const { return m_next != m_end || m_count > m_paddingBits; }
    /// Whether a bit was taken that is not there.
    bool IsOverrun() const { return m_paddingBits > m_count; }

private:
    /// Each byte with its bits in the opposite order.
    static std::uint64_t WithReversedBytes(std::uint64_t bytes) {
        constexpr std::uint64_t halves = 0x0F0F0F0F0F0F0F0F, pairs = 0x3333333333333333, bits = 0x5555555555555555;
        bytes = (bytes >> 4 & halves) | (bytes & halves) << 4;
        bytes = (bytes >> 2 & pairs) | (bytes & pairs) << 2;
        return (bytes >> 1 & bits) | (bytes & bits) << 1;
    }

    // Takes whole bytes. The bits lie at that end of the word from which they are read; the rest of it is 0.
    void Fill() {
        const unsigned wanted = (63 - m_count) / 8;
        const std::ptrdiff_t left = m_end - m_next;
        const unsigned taken = left >= 8 ? wanted : static_cast<unsigned>(std::min<std::ptrdiff_t>(left, wanted));
        std::uint64_t bytes = 0;
        if (left >= 8) {
            std::memcpy(&bytes, m_next, sizeof(bytes));
            bytes &= (std::uint64_t{1} << (8 * wanted)) - 1;
        } else {
            for (unsigned i = 0; i < taken; ++i)
                bytes |= std::uint64_t{m_next[i]} << (8 * i);
        }
        m_next += taken;
        m_paddingBits += 8 * (wanted - taken);
        if constexpr (order == BitOrder::ReversedBytes)
            bytes = WithReversedBytes(bytes);
        if constexpr (order == BitOrder::LowFirst)
            m_bits |= bytes << m_count;
        else
            m_bits |= __builtin_bswap64(bytes) >> m_count;
        m_count += 8 * wanted;
    }

    const std::uint8_t* m_next;
    const std::uint8_t* m_end;
    std::uint64_t m_bits = 0;
    unsigned m_count = 0;
    unsigned m_paddingBits = 0;
};

} // namespace ET::Img
