#include "tests/codecs/CcittWriter.h"

#include "codecs/tif/CcittCodes.h"

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace {

using namespace ET::Img::Ccitt;
using Pixels = std::vector<std::uint8_t>;

class Writer {
public:
    explicit Writer(const CcittStyle& style) : m_style(style) {}

    std::vector<std::uint8_t> Write(const BilevelRows& rows) {
        Pixels above(rows.empty() ? 0 : rows[0].size());
        std::uint32_t relative = 0;
        for (const Pixels& row : rows) {
            const bool isAlone = relative == 0;
            relative = isAlone ? m_style.relativeRows : relative - 1;
            BeginRow(!m_style.isTwoDimensional || isAlone);
            if (!m_style.isTwoDimensional || isAlone)
                PutRuns(row, 0, row.size());
            else
                PutRelative(row, above);
            above = row;
        }
        for (std::uint32_t i = 0; i < m_style.endsOfLineAtEnd; ++i)
            PutEndOfLine(true);
        return GetBytes();
    }

private:
    void Put(const std::string& bits) { m_bits += bits; }

    void PutEndOfLine(bool isAlone) {
        while (m_style.isByteAligned && m_bits.size() % 8 != 4)
            Put("0");
        Put("000000000001");
        if (m_style.isTwoDimensional)
            Put(isAlone ? "1" : "0");
    }

    void BeginRow(bool isAlone) {
        if (m_style.hasEndsOfLine)
            return PutEndOfLine(isAlone);
        while (m_style.isByteAligned && m_bits.size() % 8 != 0)
            Put("0");
        if (m_style.isTwoDimensional)
            Put(isAlone ? "1" : "0");
    }

    void PutCode(bool isBlack, std::size_t length) {
        for (const auto& codes : {isBlack ? GetBlackCodes() : GetWhiteCodes(), GetSharedCodes()})
            for (const RunCode& code : codes)
                if (code.length == length)
                    return Put(code.bits);
        throw std::logic_error("no code for a run of " + std::to_string(length));
    }

    void PutRun(bool isBlack, std::size_t length) {
        for (; length >= 2560 + 64; length -= 2560)
            PutCode(isBlack, 2560);
        if (length >= 64)
            PutCode(isBlack, length / 64 * 64);
        PutCode(isBlack, length % 64);
    }

    static std::size_t EndOfRun(const Pixels& row, std::size_t begin, bool isBlack) {
        while (begin < row.size() && (row[begin] != 0) == isBlack)
            ++begin;
        return begin;
    }

    void PutRuns(const Pixels& row, std::size_t begin, std::size_t end) {
        bool isBlack = false;
        while (begin < end) {
            const std::size_t next = EndOfRun(row, begin, isBlack);
            PutRun(isBlack, next - begin);
            begin = next;
            isBlack = !isBlack;
        }
    }

    static bool IsChange(const Pixels& row, std::size_t place) {
        return (row[place] != 0) != (place > 0 && row[place - 1] != 0);
    }

    // ITU T.4 section 4.2.1.3.4; a0 is before the first pixel at first.
    void PutRelative(const Pixels& row, const Pixels& above) {
        const auto width = static_cast<std::ptrdiff_t>(row.size());
        std::ptrdiff_t a0 = -1;
        bool isBlack = false;
        while (a0 < width) {
            const auto at = [](std::ptrdiff_t place) { return static_cast<std::size_t>(place); };
            std::ptrdiff_t b1 = a0 + 1;
            while (b1 < width && !(IsChange(above, at(b1)) && (above[at(b1)] != 0) != isBlack))
                ++b1;
            std::ptrdiff_t b2 = b1 + (b1 < width);
            while (b2 < width && !IsChange(above, at(b2)))
                ++b2;
            const auto begin = std::max<std::ptrdiff_t>(a0, 0);
            const auto a1 = static_cast<std::ptrdiff_t>(EndOfRun(row, at(begin), isBlack));
            if (b2 < a1) {
                Put("0001");
                a0 = b2;
            } else if (std::abs(a1 - b1) <= 3) {
                static const char* const codes[] = {"0000010", "000010", "010", "1", "011", "000011", "0000011"};
                Put(codes[a1 - b1 + 3]);
                a0 = a1;
                isBlack = !isBlack;
            } else {
                Put("001");
                const auto a2 = static_cast<std::ptrdiff_t>(EndOfRun(row, at(a1), !isBlack));
                PutRun(isBlack, at(a1 - begin));
                PutRun(!isBlack, at(a2 - a1));
                a0 = a2;
            }
        }
    }

    std::vector<std::uint8_t> GetBytes() const {
        std::vector<std::uint8_t> bytes((m_bits.size() + 7) / 8);
        for (std::size_t i = 0; i < m_bits.size(); ++i)
            if (m_bits[i] == '1')
                bytes[i / 8] |= static_cast<std::uint8_t>(m_style.isReversed ? 1 << i % 8 : 0x80 >> i % 8);
        return bytes;
    }

    const CcittStyle m_style;
    std::string m_bits;
};

} // namespace

std::vector<std::uint8_t> WriteCcitt(const BilevelRows& rows, const CcittStyle& style) {
    return Writer(style).Write(rows);
}

std::vector<std::uint8_t> Packed(const BilevelRows& rows) {
    std::vector<std::uint8_t> bytes;
    for (const Pixels& row : rows) {
        const std::size_t begin = bytes.size();
        bytes.resize(begin + (row.size() + 7) / 8);
        for (std::size_t x = 0; x < row.size(); ++x)
            if (row[x] != 0)
                bytes[begin + x / 8] |= static_cast<std::uint8_t>(0x80 >> x % 8);
    }
    return bytes;
}
