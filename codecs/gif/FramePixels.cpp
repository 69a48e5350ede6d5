#include "codecs/gif/FramePixels.h"

#include "codecs/lzw/GifLzw.h"
#include "foundation/Exception.h"

#include <algorithm>

namespace ET::Img::Gif {

namespace {

using Quorvex::Data::Lock;

struct Indexes {
    std::vector<std::uint8_t> values; ///< As many as the image has pixels, or as the frame has if those are fewer.
    bool isWhole = true;
};

Indexes DecodeIndexes(const Frame& frame, const std::vector<std::uint8_t>& codes, std::uint64_t imagePixels) {
    Indexes indexes;
    const std::uint32_t pixelCount = frame.GetPixelCount();
    indexes.values.resize(std::min<std::uint64_t>(pixelCount, imagePixels));
    try {
        DecodeGifLzw(codes.data(), codes.size(), frame.codeSize, pixelCount, indexes.values.data(),
                     static_cast<std::uint32_t>(indexes.values.size()));
    } catch (const std::exception&) {
        indexes.isWhole = false;
    }
    return indexes;
}

// All at once, so that writing the pixels need not ask.
void CheckIndexes(const std::vector<std::uint8_t>& indexes, const ColorTable& colors) {
    if (colors.GetSize() < 256 && !indexes.empty() &&
        *std::max_element(indexes.begin(), indexes.end()) >= colors.GetSize())
        throw Quorvex::Exception("invalid vector<T> subscript");
}

/// Hands out the indexes in their order, and 0 behind them.
class PixelWriter {
public:
    PixelWriter(const std::vector<std::uint8_t>& indexes, const ColorTable& colors)
        : m_next(indexes.data()), m_end(indexes.data() + indexes.size()), m_colors(colors) {}

    void WriteRow(Pixel* row, std::uint32_t width) {
        const auto here = static_cast<std::uint32_t>(std::min<std::ptrdiff_t>(width, m_end - m_next));
        for (std::uint32_t x = 0; x < here; ++x)
            row[x] = m_colors[m_next[x]];
        std::fill(row + here, row + width, m_colors[0]);
        m_next += here;
    }

private:
    const std::uint8_t* m_next;
    const std::uint8_t* m_end;
    const ColorTable& m_colors;
};

// GIF89a appendix E.
struct Pass {
    std::uint32_t first, step;
};
constexpr Pass interlacedPasses[] = {{0, 8}, {4, 8}, {2, 4}, {1, 2}};
constexpr Pass plainPasses[] = {{0, 1}};

template <std::size_t count>
void WriteRows(PixelWriter writer, const Pass (&passes)[count], const Lock<Pixel>& lock) {
    for (const Pass& pass : passes)
        for (std::uint32_t y = pass.first; y < lock.Height; y += pass.step)
            writer.WriteRow(lock.Row(y), lock.Width);
}

} // namespace

bool DecodeFrame(const Frame& frame, const std::vector<std::uint8_t>& codes, const Lock<Pixel>& lock) {
    CheckGifCodeSize(frame.codeSize);
    const Indexes indexes = DecodeIndexes(frame, codes, std::uint64_t(lock.Width) * lock.Height);
    CheckIndexes(indexes.values, frame.colors);
    if (lock.Width == 0)
        return indexes.isWhole;
    const PixelWriter writer(indexes.values, frame.colors);
    if (frame.isInterlaced)
        WriteRows(writer, interlacedPasses, lock);
    else
        WriteRows(writer, plainPasses, lock);
    return indexes.isWhole;
}

void FillWithBlack(const Lock<Pixel>& lock) {
    for (std::uint32_t y = 0; lock.Width != 0 && y < lock.Height; ++y)
        std::fill_n(lock.Row(y), lock.Width, Pixel{0, 0, 0, 255});
}

} // namespace ET::Img::Gif
