#include "tests/codecs/LzwWriter.h"

#include <map>
#include <utility>

namespace {

constexpr std::uint32_t capacity = 4096;

} // namespace

CodeWriter::CodeWriter(std::uint32_t codeSize, Format format)
    : m_format(format), m_codeSize(codeSize), m_clearCode(1u << codeSize), m_next(m_clearCode + 1),
      m_width(codeSize + 1) {}

CodeWriter& CodeWriter::Code(std::uint32_t code) {
    for (unsigned i = 0; i < m_width; ++i)
        m_bits.push_back((code >> (m_format.isLowBitFirst ? i : m_width - 1 - i) & 1) != 0);
    if (code == m_clearCode) {
        m_next = m_clearCode + 1;
        m_width = m_codeSize + 1;
        return *this;
    }
    if (m_next < capacity)
        ++m_next;
    if (m_next + m_format.earlyChange >= 1u << m_width && m_width < 12)
        ++m_width;
    return *this;
}

std::vector<std::uint8_t> CodeWriter::GetBytes() const {
    std::vector<std::uint8_t> bytes((m_bits.size() + 7) / 8);
    for (std::size_t i = 0; i < m_bits.size(); ++i)
        if (m_bits[i])
            bytes[i / 8] |= static_cast<std::uint8_t>(m_format.isLowBitFirst ? 1 << i % 8 : 0x80 >> i % 8);
    return bytes;
}

std::vector<std::uint8_t> WriteLzw(const std::vector<std::uint8_t>& data, std::uint32_t codeSize,
                                   const LzwStyle& style) {
    CodeWriter writer(codeSize, style.format);
    std::map<std::pair<std::uint32_t, std::uint8_t>, std::uint32_t> strings;
    if (style.beginsWithClear)
        writer.Clear();
    std::uint32_t codes = 0;
    for (std::size_t i = 0; i < data.size();) {
        std::uint32_t code = data[i++];
        while (i < data.size() && strings.contains({code, data[i]}))
            code = strings[{code, data[i++]}];
        writer.Code(code);
        // One code that grows early is one that the table cannot have.
        const bool isFull = writer.GetNext() + style.format.earlyChange >= capacity;
        if (i < data.size() && !isFull)
            strings[{code, data[i]}] = writer.GetNext();
        if ((isFull && style.clearsFullTable) || ++codes == style.codesUntilClear) {
            writer.Clear();
            strings.clear();
            codes = 0;
        }
    }
    if (style.hasEnd)
        writer.End();
    return writer.GetBytes();
}
