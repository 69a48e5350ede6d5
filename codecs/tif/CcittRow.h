#pragma once

#include <cstdint>
#include <vector>

namespace ET::Img::Ccitt {

/// A row of black and white pixels as the places where its colour changes: before the first of them it is white. They
/// ascend, and lie before the end of the row.
class Row {
public:
    explicit Row(std::uint32_t width) : m_width(width) {}

    std::uint32_t GetWidth() const { return m_width; }

    /// Makes it white.
    void Clear() { m_changes.clear(); }
    /// The colour changes at this place, which is not before the last change. Twice at one place is no change.
    void Change(std::uint32_t place) {
        if (!m_changes.empty() && m_changes.back() == place)
            m_changes.pop_back();
        else
            m_changes.push_back(place);
    }
    /// Its colour behind the last change.
    bool EndsBlack() const { return m_changes.size() % 2 != 0; }
    /// The place of a change; behind the last one it is the end of the row.
    std::uint32_t operator[](std::size_t change) const {
        return change < m_changes.size() ? m_changes[change] : m_width;
    }

    /// Writes the pixels, the highest bit first and black as 1, and zeros up to the end of the last byte.
    void Write(std::uint8_t* target) const;

private:
    std::uint32_t m_width;
    std::vector<std::uint32_t> m_changes;
};

/// Bytes that the pixels of a row take.
inline std::uint32_t GetRowBytes(std::uint32_t width) {
    return width / 8 + (width % 8 != 0 ? 1 : 0);
}

} // namespace ET::Img::Ccitt
