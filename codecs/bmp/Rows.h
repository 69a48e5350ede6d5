#pragma once

#include "codecs/bmp/RowFormat.h"
#include "data/Lock.h"

namespace ET::Img {

/// The order in which a file stores the rows of its image: bottom-up, or top-down where the signed height is negative.
class RowWalk {
public:
    RowWalk(std::int32_t signedHeight, std::uint32_t height);

    bool IsDone() const { return m_row >= m_height; }
    std::uint32_t GetRow() const { return m_row; }
    void Next() { m_row += m_step; }
    std::uint32_t GetRemaining() const;
    /// The rows that were not walked, as one span from the first to behind the last.
    std::uint32_t GetFirstRemaining() const;

private:
    std::uint32_t m_height;
    std::uint32_t m_step;
    // A bottom-up walk ends by wrapping below row 0.
    std::uint32_t m_row;
};

/// Reads the rows in the order of the walk from where the stream stands, and leaves the walk at the first row that it
/// did not deliver. Raises Exception with empty text where the stream ends too early: all rows before are there then.
void DecodeRows(Quorvex::Stream& stream, const RowFormat& format, const Quorvex::Data::Lock<Pixel>& lock,
                RowWalk& walk);

/// Makes the visible pixels of the rows from first up to end 0, as ClearMemory does.
void ClearRows(const Quorvex::Data::Lock<Pixel>& lock, std::uint32_t first, std::uint32_t end);

/// Whether any visible pixel has an alpha other than 0.
bool HasVisibleAlpha(const Quorvex::Data::Lock<Pixel>& lock);

} // namespace ET::Img
