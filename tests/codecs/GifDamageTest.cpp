#include "tests/codecs/GifLoad.h"
#include "tests/codecs/GifReference.h"

#include <gtest/gtest.h>

using namespace Quorvex;

// Files of every variant, cut or with one byte changed, beside the plain decoder: what is refused with which text,
// which frames there are, what they show, and whether they are complete.

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr char nothing[] = "(nothing was raised)";

Bytes Indexes(std::uint32_t count, std::uint32_t colors) {
    Bytes indexes;
    for (std::uint32_t i = 0; i < count; ++i)
        indexes.push_back(static_cast<std::uint8_t>((i * i / 7 + i / 3) % colors));
    return indexes;
}

GifFrame Frame(std::uint32_t width, std::uint32_t height, std::uint32_t colors, std::uint32_t codeSize) {
    return {.width = width, .height = height, .codeSize = codeSize, .indexes = Indexes(width * height, colors)};
}

struct Variant {
    const char* name;
    GifRecipe recipe;
};

/// Frames before the last one, that each has another size.
GifRecipe Several() {
    GifRecipe recipe{.colors = GifColors(4)};
    recipe.frames = {Frame(9, 8, 4, 2), Frame(5, 5, 4, 2), Frame(12, 9, 4, 2), Frame(7, 10, 4, 2)};
    recipe.frames[1].isInterlaced = recipe.frames[2].isInterlaced = true;
    return recipe;
}

GifRecipe WithExtensions() {
    GifRecipe recipe{.colors = GifColors(4)};
    recipe.beforeFrames = {0x21, 0xFF, 11,  'N',  'E',  'T',  'S', 'C',  'A', 'P',
                           'E',  '2',  '.', '0',  3,    1,    0,   0,    0, // how often to repeat
                           0x21, 0xFE, 3,   0x3B, 0x2C, 0x21, 1,   0x3B, 0, // a comment of two sub-blocks
                           0x00, 0xFF,                                      // of no block
                           0x21, 0xF9, 4,   0x05, 10,   0,    3,   0,       // graphic control: 3 is transparent
                           0x21, 0x01, 12,  0,    0,    0,    0,   9,    0,   9,
                           0,    8,    8,   0,    1,    2,    'a', 'b',  0}; // plain text
    recipe.frames = {Frame(9, 11, 4, 2), Frame(9, 11, 4, 2)};
    return recipe;
}

std::vector<Variant> Variants() {
    std::vector<Variant> variants;
    const auto add = [&variants](const char* name, std::uint32_t colors, GifFrame frame) -> GifRecipe& {
        variants.push_back({name, {.colors = GifColors(colors)}});
        variants.back().recipe.frames = {std::move(frame)};
        return variants.back().recipe;
    };
    add("plain", 4, Frame(9, 11, 4, 2));
    add("87a", 2, Frame(9, 11, 2, 2)).signature = "GIF87a";
    add("interlaced", 4, Frame(9, 11, 4, 2)).frames[0].isInterlaced = true;
    add("256 colours", 256, Frame(9, 11, 256, 8));
    add("small local table", 16, Frame(9, 11, 16, 4)).frames[0].colors = GifColors(4, 99);
    add("large local table", 2, Frame(9, 11, 8, 3)).frames[0].colors = GifColors(8, 99);
    add("no clear code", 4, Frame(9, 11, 4, 2)).frames[0].style = {.beginsWithClear = false, .hasEnd = false};
    add("many clear codes", 4, Frame(9, 11, 4, 2)).frames[0].style.codesUntilClear = 5;
    add("small sub-blocks", 4, Frame(9, 11, 4, 2)).frames[0].blockSize = 3;
    add("codes of up to 12 bits", 16, Frame(9, 11, 16, 11));
    add("data behind the last pixel", 4, Frame(9, 11, 4, 2)).frames[0].height = 7;
    variants.push_back({"several frames", Several()});
    variants.push_back({"extensions", WithExtensions()});
    return variants;
}

} // namespace

TEST(GifDamage, ThePlainDecoderAgreesAboutWholeFiles) {
    for (const Variant& variant : Variants()) {
        const GifReference reference = DecodeGifPlainly(variant.recipe.Build());
        ASSERT_EQ(reference.frames.size(), variant.recipe.frames.size()) << variant.name;
        for (const GifReferenceFrame& frame : reference.frames) {
            EXPECT_EQ(frame.failure, nothing) << variant.name;
            EXPECT_TRUE(frame.isWhole) << variant.name;
        }
        for (const auto manner : {TestStream::Manner::File, TestStream::Manner::Memory})
            ExpectGif(variant.recipe.Build(), reference, manner, variant.name);
    }
}

TEST(GifDamage, AFileThatIsCutAtAnyByteIsRefused) {
    for (const Variant& variant : Variants()) {
        const Bytes file = variant.recipe.Build();
        for (std::size_t length = 0; length < file.size(); ++length) {
            const Bytes cut(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length));
            for (std::size_t i = 0; i < variant.recipe.frames.size(); ++i) {
                const auto manner = (length + i) % 2 == 0 ? TestStream::Manner::File : TestStream::Manner::Memory;
                const auto number = static_cast<std::int32_t>(i + 1);
                ASSERT_EQ(Quorvex::Test::RaisedText([&] { GifLoad(cut, number, manner); }), "")
                    << variant.name << ", frame " << i << ", cut at " << length;
            }
        }
    }
}

// The file is whole but for the codes of one frame.
TEST(GifDamage, CodesThatAreCutAtAnyByteShowWhatTheyHave) {
    for (const Variant& variant : Variants()) {
        for (std::size_t i = 0; i < variant.recipe.frames.size(); ++i) {
            const GifFrame& frame = variant.recipe.frames[i];
            const Bytes codes = WriteLzw(frame.indexes, frame.codeSize, frame.style);
            for (std::size_t length = 0; length < codes.size(); ++length) {
                GifRecipe cut = variant.recipe;
                cut.frames[i].codes.emplace(codes.begin(), codes.begin() + static_cast<std::ptrdiff_t>(length));
                const auto manner = length % 2 == 0 ? TestStream::Manner::File : TestStream::Manner::Memory;
                const Bytes file = cut.Build();
                ExpectGif(file, DecodeGifPlainly(file), manner,
                          std::string(variant.name) + ", cut at " + std::to_string(length));
                if (HasFatalFailure())
                    return;
            }
        }
    }
}

TEST(GifDamage, OneWrongByteAnywhereEndsAsInThePlainDecoder) {
    for (const Variant& variant : Variants()) {
        const Bytes file = variant.recipe.Build();
        std::uint32_t refused = 0, whole = 0, incomplete = 0;
        for (std::size_t i = 0; i < 2000; ++i) {
            Bytes damaged = file;
            damaged[i % file.size()] ^= static_cast<std::uint8_t>(1 + (i * 37 + i / file.size() * 11) % 255);
            const auto manner = i % 2 == 0 ? TestStream::Manner::File : TestStream::Manner::Memory;
            const GifReference reference = DecodeGifPlainly(damaged);
            ExpectGif(damaged, reference, manner, std::string(variant.name) + ", damage " + std::to_string(i));
            if (HasFatalFailure())
                return;
            ++(reference.frames.empty() ? refused : reference.frames[0].isWhole ? whole : incomplete);
        }
        // The damage is of every kind.
        EXPECT_GT(refused, 20u) << variant.name;
        EXPECT_GT(whole, 20u) << variant.name;
        EXPECT_GT(incomplete, 20u) << variant.name;
    }
}
