#ifdef VARNOLITE_HAS_GIF

#include "tests/codecs/GifCorpus.h"
#include "tests/codecs/GifLoad.h"
#include "tests/codecs/GifReference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include <gif_lib.h>

using namespace Quorvex;

// Frames beside giflib's, which hands out their indexes and tables without any compositing.

namespace {

using Bytes = std::vector<std::uint8_t>;
using Pixels = std::vector<std::uint32_t>;

struct PeerFrame {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    bool isInterlaced = false;
    Pixels pixels{}; ///< AARRGGBB, in the order of the file.
    std::uint32_t firstColor = 0;
};

struct Peer {
    std::vector<PeerFrame> frames{};
    bool isRead = false; ///< To the end, without a failure.
};

struct Source {
    const Bytes& bytes;
    std::size_t position = 0;

    static int Read(GifFileType* gif, GifByteType* target, int count) {
        Source& source = *static_cast<Source*>(gif->UserData);
        const std::size_t left = source.bytes.size() - source.position;
        const std::size_t size = std::min(static_cast<std::size_t>(count), left);
        std::copy_n(source.bytes.data() + source.position, size, target);
        source.position += size;
        return static_cast<int>(size);
    }
};

/// The frame's own colours over the file's.
Pixels ColorsOf(const ColorMapObject* global, const ColorMapObject* local) {
    Pixels colors;
    for (const ColorMapObject* table : {global, local}) {
        if (table == nullptr)
            continue;
        const auto count = static_cast<std::size_t>(table->ColorCount);
        colors.resize(std::max(colors.size(), count));
        for (std::size_t i = 0; i < count; ++i) {
            const GifColorType& color = table->Colors[i];
            colors[i] = 0xFF000000u | std::uint32_t(color.Red) << 16 | std::uint32_t(color.Green) << 8 | color.Blue;
        }
    }
    return colors;
}

PeerFrame FrameOf(const SavedImage& image, const ColorMapObject* global) {
    const GifImageDesc& description = image.ImageDesc;
    PeerFrame frame{.width = static_cast<std::uint32_t>(description.Width),
                    .height = static_cast<std::uint32_t>(description.Height),
                    .isInterlaced = description.Interlace};
    const Pixels colors = ColorsOf(global, description.ColorMap);
    frame.firstColor = colors.empty() ? 0 : colors[0];
    // giflib has put the rows in their order from the top.
    for (const std::uint32_t y : GifRowOrder(frame.height, frame.isInterlaced)) {
        for (std::uint32_t x = 0; x < frame.width; ++x) {
            const std::uint8_t index = image.RasterBits[std::size_t(y) * frame.width + x];
            frame.pixels.push_back(index < colors.size() ? colors[index] : 0);
        }
    }
    return frame;
}

Peer ReadPeer(const Bytes& file) {
    Source source{file};
    int error = 0;
    GifFileType* const gif = DGifOpen(&source, &Source::Read, &error);
    if (gif == nullptr)
        return {};
    Peer peer;
    peer.isRead = DGifSlurp(gif) == GIF_OK;
    for (int i = 0; peer.isRead && i < gif->ImageCount; ++i)
        peer.frames.push_back(FrameOf(gif->SavedImages[i], gif->SColorMap));
    DGifCloseFile(gif, &error);
    return peer;
}

void ExpectAsPeer(const Bytes& file, const std::string& what) {
    const Peer peer = ReadPeer(file);
    ASSERT_TRUE(peer.isRead) << what;
    for (std::size_t i = 0; i < peer.frames.size(); ++i) {
        const auto number = static_cast<std::int32_t>(i + 1);
        const PeerFrame& frame = peer.frames[i];
        const PeerFrame& last = peer.frames.back();
        const GifLoad load(file, number);
        EXPECT_EQ(load.decoder->GetCount(), peer.frames.size()) << what;
        EXPECT_FALSE(load.decoder->IsIncomplete()) << what;
        EXPECT_EQ(load.image->GetWidth(), last.width) << what;
        EXPECT_EQ(load.image->GetHeight(), last.height) << what;
        EXPECT_TRUE(load.Pixels() ==
                    GifImage(frame.pixels, frame.isInterlaced, last.width, last.height, frame.firstColor))
            << what << ", frame " << number;
    }
}

/// Good files that giflib cannot read: one has bytes between its blocks, one a code size above 8.
const std::set<std::string> unreadForPeer = {
    "gif/valid/Pillow/test_extents_transparency.gif",
    "gif/valid/pygif/max-codes.gif",
};

Bytes Indexes(std::uint32_t count, std::uint32_t colors, std::uint32_t seed) {
    Bytes indexes;
    std::uint32_t state = seed;
    for (std::uint32_t i = 0; i < count; ++i) {
        if (i % 11 == 0 || (state >> 28) == 3)
            state = state * 1664525 + 1013904223;
        indexes.push_back(static_cast<std::uint8_t>((state >> 20) % colors));
    }
    return indexes;
}

} // namespace

TEST(GifPeer, AGridOfFilesDecodesAlike) {
    constexpr std::uint32_t sizes[] = {1, 2, 7, 8, 9, 31, 100};
    for (std::uint32_t depth = 1; depth <= 8; ++depth) {
        for (const std::uint32_t width : sizes) {
            for (const std::uint32_t height : sizes) {
                GifRecipe recipe{.colors = GifColors(1u << depth)};
                for (const bool isInterlaced : {false, true}) {
                    GifFrame frame{.width = width,
                                   .height = height,
                                   .isInterlaced = isInterlaced,
                                   .codeSize = std::max(depth, 2u),
                                   .indexes = Indexes(width * height, 1u << depth, width + height)};
                    frame.style.clearsFullTable = (width + height) % 2 == 0;
                    frame.style.codesUntilClear = (width * height) % 3 == 0 ? 50 : 0;
                    recipe.frames.push_back(frame);
                    frame.colors = GifColors(1u << (9 - depth), 77);
                    frame.indexes = Indexes(width * height, std::max(1u << (9 - depth), 1u << depth) - 1, 5);
                    frame.codeSize = std::max({depth, 9 - depth, 2u});
                    recipe.frames.push_back(frame);
                }
                ExpectAsPeer(recipe.Build(), "depth " + std::to_string(depth) + ", " + std::to_string(width) + " x " +
                                                 std::to_string(height));
            }
        }
    }
}

TEST(GifPeer, FullTablesDecodeAlike) {
    for (const bool clearsFullTable : {false, true}) {
        GifRecipe recipe{.colors = GifColors(256)};
        recipe.frames = {{.width = 300, .height = 200, .indexes = Indexes(60000, 256, 9)}};
        recipe.frames[0].style.clearsFullTable = clearsFullTable;
        ExpectAsPeer(recipe.Build(), "");
    }
}

TEST_F(GifCorpus, ValidFilesDecodeAsInGiflib) {
    int compared = 0;
    for (const Corpus::File& file : Corpus::Files("gif")) {
        if (!file.isValid)
            continue;
        const Bytes bytes = Corpus::Content(file.path);
        if (unreadForPeer.contains(file.path)) {
            EXPECT_FALSE(ReadPeer(bytes).isRead) << file.path;
        } else if (GifOutcome(bytes) == "decodes") {
            ++compared;
            ExpectAsPeer(bytes, file.path);
        }
    }
    EXPECT_GT(compared, 0);
}

#endif
