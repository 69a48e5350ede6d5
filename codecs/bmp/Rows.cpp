#include "codecs/bmp/Rows.h"

#include "codecs/ClearMemory.h"
#include "data/StreamBuffer.h"

#include <algorithm>

namespace ET::Img {

namespace {

// Read at once: large enough to make the calls to the system few, small enough to stay in a processor's cache.
constexpr std::uint64_t blockBytes = 256 * 1024;

// At least one: where the stream does not hold even that, its read is what fails.
std::uint32_t RowsOfNextBlock(const Quorvex::Stream& stream, std::uint64_t rowBytes, std::uint32_t wanted) {
    const std::uint64_t position = stream.tell();
    const std::uint64_t size = stream.size();
    const std::uint64_t available = std::max<std::uint64_t>(1, position < size ? (size - position) / rowBytes : 0);
    const std::uint64_t inBlock = std::max<std::uint64_t>(1, blockBytes / rowBytes);
    return static_cast<std::uint32_t>(std::min({available, inBlock, std::uint64_t(wanted)}));
}

} // namespace

RowWalk::RowWalk(std::int32_t signedHeight, std::uint32_t height)
    : m_height(height), m_step(signedHeight >= 0 ? 0u - 1u : 1u),
      m_row(static_cast<std::uint32_t>(std::max(std::int64_t(signedHeight) - 1, std::int64_t(0)))) {}

std::uint32_t RowWalk::GetRemaining() const {
    if (IsDone())
        return 0;
    return m_step == 1 ? m_height - m_row : m_row + 1;
}

std::uint32_t RowWalk::GetFirstRemaining() const {
    return m_step == 1 ? m_row : 0;
}

void DecodeRows(Quorvex::Stream& stream, const RowFormat& format, const Quorvex::Data::Lock<Pixel>& lock,
                RowWalk& walk) {
    // Rows without pixels have no bytes: nothing to read, however many there are.
    if (lock.Width == 0)
        return;
    const std::uint32_t rowBytes = format.GetRowBytes();
    Quorvex::StreamBuffer block;
    while (!walk.IsDone()) {
        const std::uint32_t rows = RowsOfNextBlock(stream, rowBytes, walk.GetRemaining());
        block.Refill(stream.lock(rows * rowBytes));
        for (std::uint32_t i = 0; i < rows; ++i, walk.Next())
            format.Convert(block.Take(rowBytes), lock.Row(walk.GetRow()));
    }
}

void ClearRows(const Quorvex::Data::Lock<Pixel>& lock, std::uint32_t first, std::uint32_t end) {
    // A header may claim any number of rows that have no pixels.
    if (lock.Width == 0)
        return;
    for (std::uint32_t y = first; y < end; ++y)
        ClearMemory(lock.Row(y), lock.Width * sizeof(Pixel));
}

bool HasVisibleAlpha(const Quorvex::Data::Lock<Pixel>& lock) {
    if (lock.Width == 0)
        return false;
    for (std::uint32_t y = 0; y < lock.Height; ++y) {
        const Pixel* row = lock.Row(y);
        if (std::any_of(row, row + lock.Width, [](const Pixel& pixel) { return pixel.alpha != 0; }))
            return true;
    }
    return false;
}

} // namespace ET::Img
