#pragma once

#include <cstdint>
#include <cstring>

namespace ET::Img::Jpg {

/// Bits of an entropy-coded segment, the most significant first (ITU T.81 F.2.2.5): FF 00 is a data byte FF, FF and
/// anything else is the marker that ends the segment, as does the end of the memory. Behind the end there are zeros
/// without limit, which are counted; whoever reads checks IsOverrun() from time to time, not at each bit. Does not own
/// the bytes. A loop over many codes works on a copy of its own: as nothing here hands out its address, the compiler
/// keeps the copy in registers.
class BitReader {
public:
    BitReader(const std::uint8_t* begin, const std::uint8_t* end) : m_next(begin), m_end(end) {}

    /// At least this many bits can be peeked at and skipped after a Fill.
    static constexpr unsigned filledBits = 56;

    void Fill() {
        // Eight bytes without an FF among them are what a segment mostly consists of.
        if (m_end - m_next >= 8) {
            std::uint64_t bytes = 0;
            std::memcpy(&bytes, m_next, sizeof(bytes));
            if (!HasFF(bytes)) {
                // Bits below those that are counted are those of the byte at m_next, so that they may come twice.
                m_bits |= __builtin_bswap64(bytes) >> m_count;
                m_next += (63 - m_count) >> 3;
                m_count |= filledBits;
                return;
            }
        }
        *this = FilledBytewise(*this);
    }

    /// The next bits, 1 to 32 of them, as a number.
    std::uint32_t Peek(unsigned count) const { return static_cast<std::uint32_t>(m_bits >> (64 - count)); }
    void Skip(unsigned count) {
        m_bits <<= count;
        m_count -= count;
    }
    /// 1 to 32 bits.
    std::uint32_t Get(unsigned count) {
        const std::uint32_t value = Peek(count);
        Skip(count);
        return value;
    }
    /// One bit, with a fill only where there is none left.
    std::uint32_t GetBit() {
        if (m_count == 0)
            Fill();
        return Get(1);
    }
    /// Whether more was read than the zeros that fill up a last byte.
    bool IsOverrun() const { return m_paddingBits > m_count + 7; }

    /// Where the segment goes on behind the last bit that was read: the bits left in its byte do not count.
    const std::uint8_t* Position() const {
        const unsigned padding = m_paddingBits < m_count ? m_paddingBits : m_count;
        const std::uint8_t* position = m_next;
        // FF cannot be data by itself, so that 00 behind it is always its companion.
        for (unsigned bytes = (m_count - padding) / 8; bytes != 0; --bytes)
            position -= position - m_begin >= 2 && position[-1] == 0 && position[-2] == 0xFF ? 2 : 1;
        return position;
    }

private:
    static bool HasFF(std::uint64_t bytes) {
        // A byte of the inverse is zero.
        constexpr std::uint64_t ones = 0x0101010101010101;
        return ((~bytes - ones) & bytes & (ones << 7)) != 0;
    }

    __attribute__((noinline)) static BitReader FilledBytewise(BitReader reader) {
        while (reader.m_count < filledBits) {
            std::uint64_t byte = 0;
            if (reader.IsAtEnd())
                reader.m_paddingBits += 8;
            else {
                byte = *reader.m_next;
                reader.m_next += byte == 0xFF ? 2 : 1;
            }
            reader.m_bits |= byte << (56 - reader.m_count);
            reader.m_count += 8;
        }
        return reader;
    }
    bool IsAtEnd() const { return m_next == m_end || (*m_next == 0xFF && (m_end - m_next < 2 || m_next[1] != 0)); }

    const std::uint8_t* m_next;
    const std::uint8_t* m_end;
    const std::uint8_t* m_begin = m_next;
    std::uint64_t m_bits = 0; ///< From the highest on.
    unsigned m_count = 0;     ///< Of valid bits, the padding among them.
    unsigned m_paddingBits = 0;
};

} // namespace ET::Img::Jpg
