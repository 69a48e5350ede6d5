#include "tests/codecs/GifReference.h"

#include "tests/codecs/GifLoad.h"
#include "tests/codecs/LzwReference.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr char nothing[] = "(nothing was raised)";

struct StoredFrame {
    std::uint32_t width, height;
    bool isInterlaced;
    std::vector<std::uint32_t> colors;
    std::uint32_t codeSize;
    Bytes codes;
};

/// Raises the text with which the file is refused.
class Parser {
public:
    explicit Parser(const Bytes& file) : m_file(file) {}

    std::vector<StoredFrame> Frames() {
        const Bytes signature = Take(6);
        if (signature[3] != '8' || (signature[4] != '7' && signature[4] != '9') || signature[5] != 'a')
            throw std::string("unknown GIF version");
        const std::uint32_t flags = Take(7)[4];
        if (flags < 128)
            throw std::string(signature[4] == '7' ? "250" : "324") + " missing global color map";
        Colors(m_colors, flags);
        std::vector<StoredFrame> frames;
        while (true) {
            const std::uint32_t kind = Take(1)[0];
            if (kind == 0x3B)
                return frames;
            if (kind == 0x21) {
                Take(1);
                SubBlocks();
            }
            if (kind == 0x2C)
                frames.push_back(Frame());
        }
    }

private:
    Bytes Take(std::size_t count) {
        if (count > m_file.size() - m_position)
            throw std::string();
        const auto from = m_file.begin() + static_cast<std::ptrdiff_t>(m_position);
        m_position += count;
        return Bytes(from, from + static_cast<std::ptrdiff_t>(count));
    }

    Bytes SubBlocks() {
        Bytes all;
        for (Bytes block; !(block = Take(Take(1)[0])).empty();)
            all.insert(all.end(), block.begin(), block.end());
        return all;
    }

    void Colors(std::vector<std::uint32_t>& colors, std::uint32_t flags) {
        const std::size_t count = std::size_t{2} << flags % 8;
        colors.resize(std::max(colors.size(), count));
        for (std::size_t i = 0; i < count; ++i) {
            const Bytes color = Take(3);
            colors[i] = 0xFF000000u | std::uint32_t{color[0]} << 16 | std::uint32_t{color[1]} << 8 | color[2];
        }
    }

    StoredFrame Frame() {
        const Bytes head = Take(9);
        StoredFrame frame{head[4] + 256u * head[5], head[6] + 256u * head[7], (head[8] & 0x40) != 0, m_colors, 0, {}};
        if (head[8] >= 128)
            Colors(frame.colors, head[8]);
        frame.codeSize = Take(1)[0];
        frame.codes = SubBlocks();
        return frame;
    }

    const Bytes& m_file;
    std::size_t m_position = 0;
    std::vector<std::uint32_t> m_colors;
};

GifReferenceFrame Decoded(const StoredFrame& frame, const GifReference& file) {
    if (frame.codeSize > 11)
        return {.failure = "CodeSize>LZ_BITS"};
    const LzwOutcome outcome = ReferenceLzw(frame.codes, frame.codeSize, {}, std::size_t{frame.width} * frame.height);
    GifReferenceFrame decoded{.failure = nothing, .isWhole = outcome.isWhole};
    const std::size_t shown = std::min(outcome.bytes.size(), std::size_t{file.width} * file.height);
    std::vector<std::uint32_t> pixels;
    for (std::size_t i = 0; i < shown; ++i) {
        if (outcome.bytes[i] >= frame.colors.size())
            return {.failure = "invalid vector<T> subscript"};
        pixels.push_back(frame.colors[outcome.bytes[i]]);
    }
    // Behind the last pixel of the frame, and behind the last of its data, all have the first colour.
    decoded.pixels = GifImage(pixels, frame.isInterlaced, file.width, file.height, frame.colors[0]);
    return decoded;
}

} // namespace

GifReference DecodeGifPlainly(const Bytes& file) {
    GifReference reference{.failure = nothing};
    try {
        const std::vector<StoredFrame> frames = Parser(file).Frames();
        if (frames.empty())
            return reference;
        reference.width = frames.back().width;
        reference.height = frames.back().height;
        for (const StoredFrame& frame : frames)
            reference.frames.push_back(Decoded(frame, reference));
    } catch (const std::string& failure) {
        reference.failure = failure;
    }
    return reference;
}

std::vector<std::uint32_t> GifRowOrder(std::uint32_t height, bool isInterlaced) {
    std::vector<std::uint32_t> rows;
    for (std::uint32_t pass = 0; pass < 4; ++pass)
        for (std::uint32_t y = 0; y < height; ++y) {
            const std::uint32_t ofRow = y % 8 == 0 ? 0 : y % 8 == 4 ? 1 : y % 4 == 2 ? 2 : 3;
            if (isInterlaced ? pass == ofRow : pass == 0)
                rows.push_back(y);
        }
    return rows;
}

std::vector<std::uint32_t> GifImage(const std::vector<std::uint32_t>& pixels, bool isInterlaced, std::uint32_t width,
                                    std::uint32_t height, std::uint32_t missing) {
    std::vector<std::uint32_t> image(std::size_t{width} * height, missing);
    std::size_t next = 0;
    for (const std::uint32_t y : GifRowOrder(height, isInterlaced))
        for (std::uint32_t x = 0; x < width && next < pixels.size(); ++x)
            image[std::size_t{y} * width + x] = pixels[next++];
    return image;
}

void ExpectGif(const Bytes& file, const GifReference& wanted, TestStream::Manner manner, const std::string& what) {
    if (wanted.frames.empty()) {
        ASSERT_EQ(Quorvex::Test::RaisedText([&] { GifLoad(file, 1, manner); }), wanted.failure) << what;
        return;
    }
    for (std::size_t i = 0; i < wanted.frames.size(); ++i) {
        const GifReferenceFrame& frame = wanted.frames[i];
        std::optional<GifLoad> load;
        ASSERT_EQ(Quorvex::Test::RaisedText([&] { load.emplace(file, static_cast<std::int32_t>(i + 1), manner); }),
                  frame.failure)
            << what << ", frame " << i;
        if (!load)
            continue;
        ASSERT_EQ(load->decoder->GetCount(), wanted.frames.size()) << what;
        ASSERT_EQ(load->image->GetWidth(), wanted.width) << what;
        ASSERT_EQ(load->image->GetHeight(), wanted.height) << what;
        ASSERT_EQ(load->decoder->IsIncomplete(), !frame.isWhole) << what << ", frame " << i;
        ASSERT_TRUE(load->Pixels() == frame.pixels) << what << ", frame " << i;
    }
}
