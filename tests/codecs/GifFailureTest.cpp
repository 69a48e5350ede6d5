#include "data/Image.h"
#include "tests/codecs/GifLoad.h"
#include "tests/codecs/ProcessorTime.h"

#include <gtest/gtest.h>

using namespace Quorvex;

namespace {

using Bytes = std::vector<std::uint8_t>;

GifRecipe OneFrame() {
    GifRecipe recipe{.colors = GifColors(4)};
    recipe.frames = {{.width = 3, .height = 2, .codeSize = 2, .indexes = {0, 1, 2, 3, 2, 1}}};
    return recipe;
}

} // namespace

TEST(GifFailure, UnknownVersions) {
    GifRecipe recipe = OneFrame();
    for (const char* signature : {"GIF88a", "GIF97a", "GIF89b", "GIF87A", "GIF80a", "\x89PNG\r\n"}) {
        recipe.signature = signature;
        EXPECT_EQ(GifFailure(recipe.Build()), "unknown GIF version") << signature;
    }
}

TEST(GifFailure, AMissingGlobalTable) {
    GifRecipe recipe = OneFrame();
    recipe.frames[0].colors = recipe.colors;
    recipe.colors.clear();
    EXPECT_EQ(GifFailure(recipe.Build()), "324 missing global color map");
    recipe.signature = "GIF87a";
    EXPECT_EQ(GifFailure(recipe.Build()), "250 missing global color map");
}

TEST(GifFailure, AMissingSeparator) {
    Bytes bytes{0x2D, 0, 0, 0, 0, 1, 0, 1, 0, 0, 2, 0};
    MemoryStream stream(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    StreamBuffer file(stream.lock(static_cast<std::uint32_t>(bytes.size())));
    EXPECT_EQ(Quorvex::Test::RaisedText([&] { ET::Img::Gif::ReadFrame(file, {}); }), "118 missing image separator");
}

TEST(GifFailure, CodeSizesAboveEleven) {
    GifRecipe recipe = OneFrame();
    for (const std::uint32_t codeSize : {12u, 13u, 31u, 32u, 255u}) {
        recipe.frames[0].codeSize = codeSize;
        recipe.frames[0].codes = Bytes{0, 0};
        EXPECT_EQ(GifFailure(recipe.Build()), "CodeSize>LZ_BITS") << codeSize;
    }
}

TEST(GifFailure, ABadCodeSizeConcernsItsFrameAlone) {
    GifRecipe recipe = OneFrame();
    recipe.frames.push_back(recipe.frames[0]);
    recipe.frames[0].codeSize = 12;
    recipe.frames[0].codes = Bytes{0, 0};
    EXPECT_EQ(GifFailure(recipe.Build(), 1), "CodeSize>LZ_BITS");
    EXPECT_FALSE(GifLoad(recipe.Build(), 2).decoder->IsIncomplete());
}

TEST(GifFailure, IndexesWithoutAColour) {
    GifRecipe recipe = OneFrame();
    recipe.frames[0].codeSize = 3;
    recipe.frames[0].indexes = {0, 1, 2, 3, 4, 0};
    EXPECT_EQ(GifFailure(recipe.Build()), "invalid vector<T> subscript");
    recipe.colors = GifColors(8);
    EXPECT_FALSE(GifLoad(recipe.Build()).decoder->IsIncomplete());
}

TEST(GifFailure, AnIndexWithoutAColourThatIsNotShownDoesNoHarm) {
    GifRecipe recipe = OneFrame();
    recipe.frames.push_back(recipe.frames[0]);
    recipe.frames[0].codeSize = 3;
    recipe.frames[0].indexes = {0, 1, 2, 3, 3, 7};
    recipe.frames[1].width = 2;
    EXPECT_FALSE(GifLoad(recipe.Build()).decoder->IsIncomplete());
}

TEST(GifFailure, DamageBehindWhatIsShownIsTold) {
    GifRecipe recipe = OneFrame();
    recipe.frames.push_back(recipe.frames[0]);
    recipe.frames[0].indexes.pop_back();
    for (const auto& [width, height] : {std::pair{1u, 2u}, {0u, 2u}, {1u, 0u}, {0u, 0u}}) {
        recipe.frames[1].width = width;
        recipe.frames[1].height = height;
        EXPECT_TRUE(GifLoad(recipe.Build(), 1).decoder->IsIncomplete()) << width << " x " << height;
        EXPECT_FALSE(GifLoad(recipe.Build(), 2).decoder->IsIncomplete()) << width << " x " << height;
    }
}

TEST(GifFailure, AMissingTrailer) {
    GifRecipe recipe = OneFrame();
    for (const Bytes& end : {Bytes{}, Bytes{0, 0, 0}}) {
        recipe.trailer = end;
        EXPECT_EQ(GifFailure(recipe.Build()), "");
        const ET::Img::GIFDecoder decoder(MakeShared<TestStream>(recipe.Build()));
        EXPECT_EQ(Quorvex::Test::RaisedText([&] { decoder.GetCount(); }), "");
    }
}

TEST(GifFailure, ASmallFileCannotAskForGigabytes) {
    GifRecipe recipe = OneFrame();
    recipe.frames[0].width = recipe.frames[0].height = 65535;
    EXPECT_EQ(GifFailure(recipe.Build()), "");
    // A frame before the last one is decoded into an image of the last one's size.
    recipe.frames.push_back(recipe.frames[0]);
    recipe.frames[1].width = recipe.frames[1].height = 2;
    const double start = ProcessorSeconds();
    EXPECT_TRUE(GifLoad(recipe.Build()).decoder->IsIncomplete());
    EXPECT_LT(ProcessorSeconds() - start, 0.1) << "with the sanitizers it takes less than 0.001";
}

TEST(GifFailure, AnImageOfModerateSizeMayBeMostlyMissing) {
    GifRecipe recipe = OneFrame();
    recipe.frames[0].width = recipe.frames[0].height = 1000;
    const GifLoad load(recipe.Build());
    EXPECT_TRUE(load.decoder->IsIncomplete());
    EXPECT_EQ(load.Pixels()[6], 0xFF000000 | recipe.colors[0]);
}

TEST(GifFailure, ATargetOfAnotherKindIsRefused) {
    ET::Img::GIFDecoder decoder(MakeShared<TestStream>(OneFrame().Build()));
    const SharedPtr<Data::ImageBase> image = MakeShared<Data::Image<std::uint8_t>>();
    image->Allocate(3, 2, 0, 0);
    EXPECT_EQ(Quorvex::Test::RaisedText([&] { decoder.Load(image, 0); }), "");
}
