#pragma once

#include <cstdint>
#include <cstdlib>
#include <utility>
#include <vector>

/// Bits as an entropy-coded segment holds them (ITU T.81 F.1.2.3): the highest first, and 00 behind each byte FF.
class JpgBitWriter {
public:
    void Put(std::uint32_t value, unsigned count) {
        while (count-- != 0) {
            m_byte = m_byte << 1 | (value >> count & 1);
            if (++m_bits != 8)
                continue;
            m_bytes.push_back(static_cast<std::uint8_t>(m_byte));
            if (m_bytes.back() == 0xFF)
                m_bytes.push_back(0);
            m_byte = m_bits = 0;
        }
    }

    /// The size of a number in bits; it has none below 2 to the power of the size (ITU T.81 table F.1).
    static unsigned SizeOf(int number) {
        unsigned size = 0;
        while (1 << size <= std::abs(number))
            ++size;
        return size;
    }

    /// The bits that tell a number among all of its size.
    void PutNumber(int number) {
        const unsigned size = SizeOf(number);
        Put(static_cast<std::uint32_t>(number > 0 ? number : number + (1 << size) - 1), size);
    }

    /// Fills the last byte up with ones.
    void Flush() {
        while (m_bits != 0)
            Put(1, 1);
    }

    void PutRestart(unsigned number) {
        Flush();
        m_bytes.insert(m_bytes.end(), {0xFF, static_cast<std::uint8_t>(0xD0 + number % 8)});
    }

    /// What was written, to its last byte.
    std::vector<std::uint8_t> Take() {
        Flush();
        return std::exchange(m_bytes, {});
    }

private:
    std::vector<std::uint8_t> m_bytes;
    std::uint32_t m_byte = 0;
    unsigned m_bits = 0;
};
