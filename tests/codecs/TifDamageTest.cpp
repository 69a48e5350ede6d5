#include "data/Image.h"
#include "tests/codecs/ProcessorTime.h"
#include "tests/codecs/TifLoad.h"
#include "tests/data/AllocationProbe.h"

#include <gtest/gtest.h>

#include <random>

using namespace Quorvex;
using Bytes = TifRecipe::Bytes;

namespace {

/// One small file for each variant of what the tests can write.
std::vector<TifRecipe> Variants() {
    std::vector<TifRecipe> variants;
    TifRecipe base;
    base.width = 11;
    base.height = 9;
    const auto add = [&](auto change) {
        TifRecipe recipe = base;
        change(recipe);
        variants.push_back(recipe.Fill());
    };
    for (const std::uint32_t compression : {1u, 32773u}) {
        base.compression = compression;
        base.rowsPerStrip = 4;
        add([](TifRecipe&) {});
        add([](TifRecipe& r) {
            r.bits = 1;
            r.photometric = 0;
        });
        add([](TifRecipe& r) {
            r.bits = 12;
            r.samples = 3;
            r.photometric = 2;
        });
        add([](TifRecipe& r) {
            r.bits = 16;
            r.samples = 4;
            r.photometric = 2;
            r.tags[338] = {3, {1}};
        });
        add([](TifRecipe& r) {
            r.samples = 3;
            r.photometric = 2;
            r.isPlanar = true;
        });
        add([](TifRecipe& r) {
            r.samples = 3;
            r.photometric = 2;
            r.tileWidth = r.tileHeight = 8;
        });
        add([](TifRecipe& r) {
            r.bits = 32;
            r.format = 3;
            r.predictor = 3;
        });
        add([](TifRecipe& r) {
            r.bits = 16;
            r.samples = 3;
            r.photometric = 2;
            r.predictor = 2;
        });
        add([](TifRecipe& r) {
            r.samples = 4;
            r.photometric = 5;
        });
        add([](TifRecipe& r) {
            r.samples = 3;
            r.photometric = 8;
        });
        add([](TifRecipe& r) {
            r.samples = 3;
            r.photometric = 6;
            r.tags[530] = {3, {1, 1}};
        });
        add([](TifRecipe& r) {
            r.bits = 4;
            r.photometric = 3;
            r.tags[320] = {3, std::vector<std::uint32_t>(48, 7)};
        });
        add([](TifRecipe& r) {
            r.bits = 64;
            r.order = TifRecipe::ByteOrder::Big;
        });
        add([](TifRecipe& r) { r.isFillReversed = true; });
    }
    return variants;
}

/// How a damaged file may end: refused, or with an image of which each byte was written.
void Decode(const Bytes& file, TestStream::Manner manner) {
    try {
        ET::Img::TIFDecoder decoder(MakeShared<TestStream>(file, manner));
        const ET::Img::ImageInfo info = decoder.GetInfo(0);
        // Damage to the size makes other images of it, which the memory of a test is not for.
        if (std::uint64_t(info.Width) * info.Height > 1 << 12)
            return;
        const TifLoad load(file, 0, 1, manner);
        ASSERT_FALSE(load.Memory().empty());
    } catch (const Exception&) {
    }
}

TEST(TifDamage, TruncationAtEveryByteIsToldOrFails) {
    for (const TifRecipe& recipe : Variants()) {
        const Bytes file = recipe.Build();
        ASSERT_FALSE(TifLoad(file).decoder.IsIncomplete());
        for (std::size_t size = 0; size < file.size(); ++size) {
            const Bytes cut(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size));
            for (const auto manner : {TestStream::Manner::File, TestStream::Manner::Memory})
                Decode(cut, manner);
        }
    }
}

TEST(TifDamage, DataCutAtEveryByteLeaveWholeTilesAndZeros) {
    for (TifRecipe recipe : Variants()) {
        // The last tile alone is cut, whose bytes lie in front of the directory otherwise.
        std::vector<Bytes> data = recipe.TileData();
        const Bytes whole = TifLoad(recipe.Build()).Memory();
        const std::size_t size = data.back().size();
        for (std::size_t cut = 0; cut < size; ++cut) {
            if (recipe.compression == 1)
                continue; // What lies behind is taken for its bytes.
            recipe.tiles = data;
            recipe.tiles.back().resize(cut);
            if (cut == 0)
                recipe.tiles.back() = {0x80};
            const TifLoad load(recipe.Build());
            const Bytes had = load.Memory();
            ASSERT_EQ(had.size(), whole.size());
            if (!load.decoder.IsIncomplete()) {
                ASSERT_EQ(had, whole);
            }
        }
    }
}

TEST(TifDamage, AByteThatIsChangedCrashesNothing) {
    std::mt19937 random(1);
    for (const TifRecipe& recipe : Variants()) {
        const Bytes file = recipe.Build();
        for (int i = 0; i < 2000; ++i) {
            Bytes damaged = file;
            damaged[random() % damaged.size()] ^= static_cast<std::uint8_t>(1 + random() % 255);
            Decode(damaged, TestStream::Manner::Memory);
        }
    }
}

/// What a load costs besides its image, whatever comes of it.
struct Cost {
    explicit Cost(const Bytes& file) {
        const double before = ProcessorSeconds();
        try {
            ET::Img::TIFDecoder decoder(MakeShared<TestStream>(file, TestStream::Manner::Memory));
            decoder.SetWorkerCount(1);
            const ET::Img::ImageInfo info = decoder.GetInfo(0);
            const auto image = Data::CreateImage(info.ColorType, info.Width, info.Height);
            const AllocationProbe probe;
            decoder.Load(image, 0);
            bytes = probe.GetTotal();
        } catch (const Exception&) {
        }
        seconds = ProcessorSeconds() - before;
    }
    double seconds;
    std::size_t bytes = 0;
};

TEST(TifDamage, ManyTilesOfTheSameBytesTakeNoTimeBeyondTheirImage) {
    // Each of 60,000 strips claims the same megabyte of bytes that stand for nothing.
    TifRecipe recipe;
    recipe.width = 8;
    recipe.height = 60000;
    recipe.compression = 32773;
    recipe.rowsPerStrip = 1;
    recipe.tiles = {Bytes(1 << 20, 0x80)};
    recipe.tags[273] = {4, std::vector<std::uint32_t>(60000, 8)};
    recipe.tags[279] = {4, std::vector<std::uint32_t>(60000, 1 << 20)};
    EXPECT_LT(Cost(recipe.Build()).seconds, 20.0);
}

TEST(TifDamage, TilesThatHangFarOverTheImageAreRefused) {
    for (const std::uint32_t compression : {1u, 5u, 32773u, 7u}) {
        TifRecipe recipe;
        recipe.width = 10;
        recipe.height = 60000;
        recipe.compression = compression;
        recipe.tileWidth = 1 << 24;
        recipe.tileHeight = 1;
        recipe.tiles = {Bytes(1000, 0x81)};
        const Bytes file = recipe.Build();
        EXPECT_LT(Cost(file).seconds, 5.0);
        EXPECT_EQ(TifFailure(file), "");
    }
}

TEST(TifDamage, HugeImagesInTinyFilesTakeNeitherTimeNorMemory) {
    for (const std::uint32_t compression : {1u, 2u, 3u, 5u, 7u, 32773u})
        for (const bool isTiled : {false, true}) {
            TifRecipe recipe;
            recipe.width = recipe.height = 30000;
            recipe.bits = compression == 2 || compression == 3 ? 1 : 8;
            recipe.compression = compression;
            recipe.tiles = {Bytes(64, 0x81)};
            recipe.values = {0};
            if (isTiled)
                recipe.tileWidth = recipe.tileHeight = 16384;
            else
                recipe.rowsPerStrip = 30000;
            const Cost cost(recipe.Build());
            EXPECT_LT(cost.seconds, 20.0) << compression;
            EXPECT_LT(cost.bytes, std::size_t{1} << 20) << compression;
        }
}

TEST(TifDamage, SamplesWithoutNumberTakeNoMemory) {
    for (const std::uint32_t bits : {1u, 64u}) {
        TifRecipe recipe;
        recipe.width = 1792;
        recipe.height = 5;
        recipe.bits = bits;
        recipe.samples = 46698;
        recipe.compression = 5;
        recipe.tiles = {Bytes(64, 0x81)};
        recipe.tags[258] = {3, {bits}};
        EXPECT_EQ(TifFailure(recipe.Build()), "") << bits;
    }
    // Few enough to be read, if only they were there.
    TifRecipe recipe;
    recipe.width = 1000;
    recipe.samples = 10000;
    recipe.tiles = {Bytes(64, 0x81)};
    recipe.tags[258] = {3, {8}};
    EXPECT_LT(Cost(recipe.Build()).bytes, std::size_t{1} << 20);
}

} // namespace
