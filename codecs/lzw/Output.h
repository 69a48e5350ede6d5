#pragma once

#include "codecs/lzw/Strings.h"

#include <algorithm>
#include <bit>
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

    /// The low byte of the code.
    String AppendByte(std::uint32_t code) {
        if (m_position < m_targetSize)
            m_target[m_position] = static_cast<std::uint8_t>(code);
        return String::OfByte(code, static_cast<std::uint32_t>(m_position++));
    }

    /// The string as it lies there now. Its own first byte may be the first one of the string's place that is new.
    [[gnu::always_inline]] String Append(String source) {
        const String string{source.head, static_cast<std::uint32_t>(m_position), source.length};
        const bool hasRoom = m_position + slack <= m_targetSize;
        if (hasRoom && source.length <= String::headSize)
            PutHead(source);
        else if (hasRoom && source.length <= slack && m_position - source.start >= chunk)
            CopyChunks(source);
        else
            CopyBytes(source, m_target, m_targetSize, m_position);
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
    void PutHead(String source) {
        if constexpr (std::endian::native == std::endian::big)
            source.head = __builtin_bswap64(source.head);
        std::memcpy(m_target + m_position, &source.head, String::headSize);
    }

    void CopyChunks(String source) {
        std::uint8_t* const to = m_target + m_position;
        const std::uint8_t* const from = m_target + source.start;
        std::memcpy(to, from, chunk);
        if (source.length > chunk)
            std::memcpy(to + chunk, from + chunk, chunk);
    }

    // Rare, and static, so that the loop around it can keep the members in registers.
    [[gnu::noinline]] static void CopyBytes(String source, std::uint8_t* target, std::uint64_t targetSize,
                                            std::uint64_t position) {
        // A target without room need not be there.
        if (position >= targetSize)
            return;
        const std::uint64_t count = std::min<std::uint64_t>(source.length, targetSize - position);
        std::uint8_t* const to = target + position;
        std::uint64_t i = 0;
        for (; i < std::min<std::uint64_t>(count, String::headSize); ++i)
            to[i] = static_cast<std::uint8_t>(source.head >> (8 * i));
        const std::uint8_t* const from = target + source.start;
        if (count <= position - source.start)
            std::copy(from + i, from + count, to + i);
        else
            for (; i < count; ++i)
                to[i] = from[i];
    }

    std::uint8_t* m_target;
    std::uint64_t m_targetSize;
    std::uint64_t m_totalSize;
    std::uint64_t m_position = 0;
};

} // namespace ET::Img::Lzw
