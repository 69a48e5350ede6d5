#pragma once

#include "codecs/lzw/Strings.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace ET::Img::Lzw {

/// Where decoded bytes go: the beginning of what the data give is kept in the target, which somebody else owns, and the
/// rest up to the total is only counted. Both are below 4 GiB.
class Output {
public:
    Output(std::uint8_t* target, std::uint32_t targetSize, std::uint32_t totalSize)
        : m_target(target), m_targetSize(targetSize), m_totalSize(totalSize) {}

    bool IsFull() const { return m_position >= m_totalSize; }
    /// Bytes in the target.
    std::uint32_t GetKept() const { return static_cast<std::uint32_t>(std::min(m_position, m_targetSize)); }

    String Append(std::uint8_t byte) {
        const String string{static_cast<std::uint32_t>(m_position), 1};
        if (m_position < m_targetSize)
            m_target[m_position] = byte;
        ++m_position;
        return string;
    }

    /// Its own first byte may be the first one of the string's place that is new.
    String Append(const String& source) {
        const String string{static_cast<std::uint32_t>(m_position), source.length};
        const std::uint64_t room = m_targetSize > m_position ? m_targetSize - m_position : 0;
        if (m_position - source.start >= chunk && room >= slack && source.length <= slack)
            CopyChunks(source);
        else
            CopyBytes(source, std::min<std::uint64_t>(source.length, room));
        m_position += source.length;
        return string;
    }

    /// Makes 0 what was written behind the end on the way.
    void ClearSlack() {
        const std::uint64_t kept = GetKept();
        std::fill_n(m_target + kept, std::min<std::uint64_t>(slack, m_targetSize - kept), std::uint8_t(0));
    }

private:
    static constexpr std::uint32_t chunk = 16;
    static constexpr std::uint32_t slack = 2 * chunk;

    // Most strings are short: more bytes than they have cost less than the question how many.
    void CopyChunks(const String& source) {
        std::uint8_t* const to = m_target + m_position;
        const std::uint8_t* const from = m_target + source.start;
        std::memcpy(to, from, chunk);
        if (source.length > chunk)
            std::memcpy(to + chunk, from + chunk, chunk);
    }

    void CopyBytes(const String& source, std::uint64_t count) {
        // A target without room need not be there.
        if (count == 0)
            return;
        std::uint8_t* const to = m_target + m_position;
        const std::uint8_t* const from = m_target + source.start;
        if (count <= m_position - source.start)
            std::copy_n(from, count, to);
        else
            for (std::uint64_t i = 0; i < count; ++i)
                to[i] = from[i];
    }

    std::uint8_t* m_target;
    std::uint64_t m_targetSize;
    std::uint64_t m_totalSize;
    std::uint64_t m_position = 0;
};

} // namespace ET::Img::Lzw
