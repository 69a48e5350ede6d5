#ifdef VARNOLITE_HAS_GIF

#include "tests/codecs/Corpus.h"
#include "tests/codecs/GifLoad.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
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
    Pixels pixels{}; ///< AARRGGBB, rows in their order from the top.
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
    for (std::size_t i = 0; i < std::size_t(frame.width) * frame.height; ++i) {
        const std::uint8_t index = image.RasterBits[i];
        frame.pixels.push_back(index < colors.size() ? colors[index] : 0);
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

/// What an image of the last frame's size shows of a frame: its rows as they are, or else its pixels in their sequence.
Pixels Expected(const PeerFrame& frame, const PeerFrame& last) {
    if (frame.width == last.width && frame.height == last.height)
        return frame.pixels;
    Pixels pixels = frame.pixels;
    pixels.resize(std::size_t(last.width) * last.height, frame.firstColor);
    return pixels;
}

void ExpectAsPeer(const Bytes& file, const std::string& what) {
    const Peer peer = ReadPeer(file);
    ASSERT_TRUE(peer.isRead) << what;
    for (std::size_t i = 0; i < peer.frames.size(); ++i) {
        const auto number = static_cast<std::int32_t>(i + 1);
        const PeerFrame& frame = peer.frames[i];
        const PeerFrame& last = peer.frames.back();
        // The order of the file is lost where giflib has put the rows in theirs.
        if (frame.isInterlaced && (frame.width != last.width || frame.height != last.height))
            continue;
        const GifLoad load(file, number);
        EXPECT_EQ(load.decoder->GetCount(), peer.frames.size()) << what;
        EXPECT_FALSE(load.decoder->IsIncomplete()) << what;
        EXPECT_EQ(load.image->GetWidth(), last.width) << what;
        EXPECT_EQ(load.image->GetHeight(), last.height) << what;
        EXPECT_TRUE(load.Pixels() == Expected(frame, last)) << what << ", frame " << number;
    }
}

/// How the frames of a file come out here.
std::string Outcome(const Bytes& file) {
    try {
        const std::uint32_t count = GifLoad(file).decoder->GetCount();
        for (std::uint32_t i = 0; i < count; ++i)
            if (GifLoad(file, static_cast<std::int32_t>(i + 1)).decoder->IsIncomplete())
                return "frame " + std::to_string(i + 1) + " is incomplete";
        return count > 0 ? "decodes" : "has no frames";
    } catch (const Exception& failure) {
        return std::string("fails: ") + failure.what();
    }
}

/// Good files that end otherwise here than in other programs.
const std::map<std::string, std::string> otherOutcomes = {
    // A global colour table is required.
    {"gif/valid/Pillow/missing_background.gif", "fails: 250 missing global color map"},
    {"gif/valid/commons-imaging/test.gif", "fails: 324 missing global color map"},
    {"gif/valid/wuffs/empty-palette.gif", "fails: 324 missing global color map"},
    // Frames without pixels and without data: the trailer is read as their code size, and the file ends.
    {"gif/valid/pygif/image-zero-size.gif", "fails: "},
    {"gif/valid/pygif/image-zero-width.gif", "fails: "},
    {"gif/valid/pygif/no-data.gif", "has no frames"},
    {"gif/valid/pygif/zero-size.gif", "has no frames"},
    // Codes that stand for nothing, and code sizes beyond all codes.
    {"gif/valid/pygif/invalid-code.gif", "frame 1 is incomplete"},
    {"gif/valid/pygif/overflow-codes-max.gif", "fails: CodeSize>LZ_BITS"},
};

/// Good files that giflib cannot read: one has bytes between its blocks, one a code size above 8.
const std::set<std::string> unreadForPeer = {
    "gif/valid/Pillow/test_extents_transparency.gif",
    "gif/valid/pygif/max-codes.gif",
};

class GifCorpus : public testing::Test {
protected:
    void SetUp() override {
        if (Corpus::Root().empty())
            GTEST_SKIP() << "VARNOLITE_CORPUS does not name the folder of the shared files";
        ASSERT_FALSE(Corpus::Files("gif").empty()) << Corpus::Root();
    }
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
    for (const Corpus::File& file : Corpus::Files("gif")) {
        if (!file.isValid)
            continue;
        const Bytes bytes = Corpus::Content(file.path);
        const auto other = otherOutcomes.find(file.path);
        const std::string outcome = Outcome(bytes);
        EXPECT_EQ(outcome, other != otherOutcomes.end() ? other->second : "decodes") << file.path;
        if (unreadForPeer.contains(file.path))
            EXPECT_FALSE(ReadPeer(bytes).isRead) << file.path;
        else if (outcome == "decodes")
            ExpectAsPeer(bytes, file.path);
    }
}

TEST_F(GifCorpus, CodeSizesAboveEightGiveTheSamePicture) {
    const auto pixels = [](const char* name) {
        return GifLoad(Corpus::Content(std::string("gif/valid/pygif/") + name)).Pixels();
    };
    EXPECT_TRUE(pixels("max-codes.gif") == pixels("4095-codes.gif"));
}

TEST_F(GifCorpus, EveryFileEndsTheSameWayFromFileAndFromMemory) {
    for (const Corpus::File& file : Corpus::Files("gif")) {
        const Bytes bytes = Corpus::Content(file.path);
        Pixels pixels[2];
        std::string failures[2];
        for (int i = 0; i < 2; ++i) {
            const auto manner = i == 0 ? TestStream::Manner::File : TestStream::Manner::Memory;
            failures[i] = Quorvex::Test::RaisedText([&] { pixels[i] = GifLoad(bytes, 1, manner).Pixels(); });
        }
        EXPECT_EQ(failures[0], failures[1]) << file.path;
        EXPECT_TRUE(pixels[0] == pixels[1]) << file.path;
    }
}

#endif
