#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace ET::Img::Lzw {

/// Which bit of a byte is read first.
enum class BitOrder { LowFirst, HighFirst };

/// Codes of up to 16 bits out of bytes that somebody else owns. Behind the end there are zeros without limit; whoever
/// reads asks IsOverrun() after each code.
template <BitOrder order>
class CodeReader {
public:
    CodeReader(const std::uint8_t* source, std::size_t sourceSize) : m_next(source), m_end(source + sourceSize) {}

    std::uint32_t Read(unsigned width) {
        if (m_count < width)
            Fill();
        m_count -= width;
        if constexpr (order == BitOrder::LowFirst) {
            const auto code = static_cast<std::uint32_t>(m_bits & ((std::uint64_t{1} << width) - 1));
            m_bits >>= width;
            return code;
        } else {
            const auto code = static_cast<std::uint32_t>(m_bits >> (64 - width));
            m_bits <<= width;
            return code;
        }
    }

    /// Whether the last code took a bit that is not there.
    bool IsOverrun() const { return m_paddingBits > m_count; }

private:
    // Bits lie at the end of the word from which they are read; those beyond m_count are 0.
    void Fill() {
        if (m_end - m_next >= 8) {
            std::uint64_t bytes = 0;
            std::memcpy(&bytes, m_next, sizeof(bytes));
            const unsigned taken = (63 - m_count) / 8;
            const std::uint64_t whole = (std::uint64_t{1} << (8 * taken)) - 1;
            if constexpr (order == BitOrder::LowFirst)
                m_bits |= (bytes & whole) << m_count;
            else
                m_bits |= (__builtin_bswap64(bytes) & ~(~std::uint64_t{0} >> (8 * taken))) >> m_count;
            m_next += taken;
            m_count += 8 * taken;
            return;
        }
        for (; m_count <= 48; m_count += 8) {
            std::uint64_t byte = 0;
            if (m_next != m_end)
                byte = *m_next++;
            else
                m_paddingBits += 8;
            m_bits |= order == BitOrder::LowFirst ? byte << m_count : byte << (56 - m_count);
        }
    }

    const std::uint8_t* m_next;
    const std::uint8_t* m_end;
    std::uint64_t m_bits = 0;
    unsigned m_count = 0;
    unsigned m_paddingBits = 0;
};

} // namespace ET::Img::Lzw
