#include "tests/codecs/LzwReference.h"

#include <optional>

namespace {

using Bytes = std::vector<std::uint8_t>;

class Reference {
public:
    Reference(const Bytes& source, std::uint32_t codeSize, CodeWriter::Format format)
        : m_source(source), m_codeSize(codeSize), m_format(format) {}

    LzwOutcome Decode(std::size_t wanted) {
        Clear();
        Bytes out;
        while (out.size() < wanted) {
            const std::optional<std::uint32_t> code = Read();
            if (!code || *code == m_clear + 1)
                return {out, false};
            if (*code == m_clear) {
                Clear();
                continue;
            }
            const std::optional<Bytes> string = StringOf(*code);
            if (!string)
                return {out, false};
            if (!m_last.empty() && m_strings.size() < 4096) {
                m_strings.push_back(m_last);
                m_strings.back().push_back(string->front());
            }
            if (m_strings.size() + m_format.earlyChange >= 1u << m_width && m_width < 12)
                ++m_width;
            m_last = *string;
            out.insert(out.end(), string->begin(), string->end());
        }
        out.resize(wanted);
        return {out, true};
    }

private:
    void Clear() {
        m_strings.clear();
        for (std::uint32_t code = 0; code < m_clear; ++code)
            m_strings.push_back({static_cast<std::uint8_t>(code)});
        m_strings.resize(m_clear + 2);
        m_last.clear();
        m_width = m_codeSize + 1;
    }

    std::optional<Bytes> StringOf(std::uint32_t code) const {
        if (code < m_strings.size())
            return m_strings[code];
        if (code > m_strings.size() || m_last.empty() || m_strings.size() >= 4096)
            return std::nullopt;
        Bytes string = m_last;
        string.push_back(m_last.front());
        return string;
    }

    std::optional<std::uint32_t> Read() {
        std::uint32_t code = 0;
        for (unsigned i = 0; i < m_width; ++i, ++m_bit) {
            if (m_bit / 8 >= m_source.size())
                return std::nullopt;
            const auto place = static_cast<unsigned>(m_bit % 8);
            const std::uint32_t bit = m_source[m_bit / 8] >> (m_format.isLowBitFirst ? place : 7 - place) & 1u;
            code |= bit << (m_format.isLowBitFirst ? i : m_width - 1 - i);
        }
        return code;
    }

    const Bytes& m_source;
    std::uint32_t m_codeSize;
    std::uint32_t m_clear = 1u << m_codeSize;
    CodeWriter::Format m_format;
    std::vector<Bytes> m_strings;
    Bytes m_last;
    unsigned m_width = 0;
    std::size_t m_bit = 0;
};

} // namespace

LzwOutcome ReferenceLzw(const Bytes& source, std::uint32_t codeSize, CodeWriter::Format format, std::size_t wanted) {
    return Reference(source, codeSize, format).Decode(wanted);
}
