#include "data/Image.h"
#include "foundation/LocalLogger.h"
#include "tests/codecs/JpgSegments.h"
#include "tests/codecs/LibtiffFile.h"
#include "tests/codecs/TifLoad.h"
#include "tests/codecs/TifPicture.h"
#include "tests/data/AllocationProbe.h"

#include <gtest/gtest.h>

#include <cmath>

using Bytes = TifRecipe::Bytes;

namespace {

using namespace JpgSegments;

/// A grey JPEG file of 8 x 8 pixels, flat: 128 and an eighth of the coefficient.
Bytes FlatJpeg(std::uint8_t bitsOfCoefficient) {
    // The size 7 of the difference as a code of four bits, its seven bits, and the end of the block.
    const unsigned bits = 7u << 12 | (bitsOfCoefficient & 127u) << 5 | 0u << 1 | 1;
    return GreyFileUpToItsData(8, 8) + Bytes{static_cast<std::uint8_t>(bits >> 8), static_cast<std::uint8_t>(bits)} +
           JpgSegments::end;
}

TifRecipe Flat(std::uint32_t compression = 7) {
    TifRecipe recipe;
    recipe.width = 8;
    recipe.height = 16;
    recipe.rowsPerStrip = 8;
    recipe.compression = compression;
    recipe.tiles = {FlatJpeg(64), FlatJpeg(72)};
    return recipe;
}

TEST(TifJpeg, AStripIsAFileOfItsOwn) {
    const TifLoad load(Flat().Build());
    EXPECT_FALSE(load.decoder.IsIncomplete());
    Bytes wanted(64, 128 + 64 / 8);
    wanted.insert(wanted.end(), 64, 128 + 72 / 8);
    EXPECT_EQ(load.Samples<std::uint8_t>(), wanted);
}

TEST(TifJpeg, TablesMayStandApart) {
    for (const bool hasEnd : {false, true}) {
        TifRecipe recipe = Flat();
        const Bytes tables = start + FlatQuantisation() + FourBitCodes(0x00) + FourBitCodes(0x10);
        const Bytes file = FlatJpeg(64);
        recipe.tiles[0] = start + Bytes(file.begin() + static_cast<std::ptrdiff_t>(tables.size()), file.end());
        const Bytes all = hasEnd ? tables + JpgSegments::end : tables;
        recipe.tags[347] = {7, std::vector<std::uint32_t>(all.begin(), all.end())};
        EXPECT_EQ(TifLoad(recipe.Build()).Samples<std::uint8_t>(), TifLoad(Flat().Build()).Samples<std::uint8_t>());
    }
}

TEST(TifJpeg, AStripThatIsNoJpegStaysAtZero) {
    for (const Bytes& wrong : {Bytes{1, 2, 3}, Bytes{0xFF, 0xD8}, GreyFileUpToItsData(8, 8), FlatJpeg(64)}) {
        TifRecipe recipe = Flat();
        recipe.tiles[0] = wrong;
        // The last one is a good file that ends too early.
        if (wrong == FlatJpeg(64))
            recipe.tiles[0].resize(wrong.size() - 3);
        const TifLoad load(recipe.Build());
        EXPECT_TRUE(load.decoder.IsIncomplete());
        Bytes wanted(64, 0);
        wanted.insert(wanted.end(), 64, 128 + 72 / 8);
        EXPECT_EQ(load.Samples<std::uint8_t>(), wanted);
    }
}

TEST(TifJpeg, ManyStripsDoNotTakeALargeFrameEach) {
    TifRecipe recipe = Flat();
    recipe.height = 8 * 2000;
    recipe.tiles.assign(2000, start + FrameHeader(0xC0, 8, 4096, 4096, {{1}}) + JpgSegments::end);
    const Bytes file = recipe.Build();
    const AllocationProbe probe;
    EXPECT_TRUE(TifLoad(file).decoder.IsIncomplete());
    EXPECT_LT(probe.GetTotal(), std::size_t{1} << 30) << "a frame of 4096 x 4096 takes 64 MiB";
}

TEST(TifJpeg, FramesOfOtherSizes) {
    TifRecipe recipe = Flat();
    recipe.height = 12;
    EXPECT_FALSE(TifLoad(recipe.Build()).decoder.IsIncomplete()) << "the last strip is longer than the image";
    recipe.width = 9;
    EXPECT_TRUE(TifLoad(recipe.Build()).decoder.IsIncomplete()) << "too narrow";
}

/// The messages that decoding the file brings.
std::vector<Quorvex::BilingualText> MessagesOf(const Bytes& file, std::uint32_t workerCount) {
    ET::Img::TIFDecoder decoder(Quorvex::MakeShared<TestStream>(file, TestStream::Manner::Memory));
    const auto logger = Quorvex::MakeShared<Quorvex::LocalLogger>();
    decoder.SetLogger(logger);
    decoder.SetWorkerCount(workerCount);
    const ET::Img::ImageInfo info = decoder.GetInfo(0);
    decoder.Load(Quorvex::Data::CreateImage(info.ColorType, info.Width, info.Height), 0);
    return logger->GetMessages();
}

TEST(TifJpeg, WhatDamagesTheFirstStripIsLogged) {
    const Bytes headers = start + FlatQuantisation();
    using Quorvex::String;
    const std::vector<std::pair<Bytes, String>> damages{
        {{1, 2, 3}, "Missing Start Of Image"},
        {headers + end, "Missing Start Of Frame!"},
        {GreyFileUpToItsData(8, 8), "damaged JPEG data"},
        {GreyFileUpToItsData(7, 8) + FlatBlocks({1}) + end, "JPEG data of another size or depth"}};
    for (const auto& [bytes, reason] : damages)
        for (const bool isWhole : {false, true})
            for (const std::uint32_t workers : {1u, 8u}) {
                TifRecipe recipe = Flat();
                recipe.tiles = {isWhole ? FlatJpeg(64) : bytes, bytes};
                const Bytes file = recipe.Build();
                const auto messages = MessagesOf(file, workers);
                ASSERT_EQ(messages.size(), 1u);
                EXPECT_EQ(messages[0][0], String(u"TIFF: Ein Teil des Bildes ist beschädigt: ") + reason);
                EXPECT_EQ(messages[0][1], String("TIFF: A part of the image is damaged: ") + reason);
                EXPECT_TRUE(TifLoad(file).decoder.IsIncomplete());
            }
    EXPECT_TRUE(MessagesOf(Flat().Build(), 1).empty());
    TifRecipe recipe = Flat();
    recipe.tiles = {damages[0].first, damages[1].first};
    EXPECT_EQ(MessagesOf(recipe.Build(), 8)[0][1], String("TIFF: A part of the image is damaged: ") + damages[0].second)
        << "the first of several";
}

#ifdef VARNOLITE_HAS_TIFF

/// A smooth picture, whose samples all differ in their course.
Bytes Smooth(const LibtiffFile::Format& format) {
    Bytes rows;
    for (std::uint32_t plane = 0; plane < (format.isPlanar ? format.samples : 1u); ++plane)
        for (std::uint32_t y = 0; y < format.height; ++y)
            for (std::uint32_t x = 0; x < format.width; ++x)
                for (std::uint32_t s = 0; s < (format.isPlanar ? 1u : format.samples); ++s)
                    rows.push_back(static_cast<std::uint8_t>(127.5 + 90 * std::sin(x * 0.05 + (plane + s)) *
                                                                         std::cos(y * 0.04 + 2 * (plane + s))));
    return rows;
}

/// What is loaded of the file, next to what the libraries make of it.
std::string Difference(const Bytes& file) {
    const TifLoad load(file);
    EXPECT_FALSE(load.decoder.IsIncomplete());
    return TifPicture(file, 0).DifferenceTo(load);
}

LibtiffFile::Format JpegFormat(std::uint16_t samples, std::uint16_t photometric, std::uint32_t tileSize,
                               bool isPlanar) {
    LibtiffFile::Format format;
    format.width = 83;
    format.height = 71;
    format.samples = samples;
    format.photometric = photometric;
    format.compression = 7;
    format.tileSize = tileSize;
    format.rowsPerStrip = 16;
    format.isPlanar = isPlanar;
    return format;
}

TEST(TifJpeg, GreyAndRgbOfLibtiff) {
    for (const std::uint16_t samples : {std::uint16_t{1}, std::uint16_t{3}})
        for (const std::uint32_t tileSize : {0u, 32u})
            for (const bool isPlanar : {false, true})
                for (const bool isBigEndian : {false, true}) {
                    LibtiffFile::Format format = JpegFormat(samples, samples == 3 ? 2 : 1, tileSize, isPlanar);
                    format.isBigEndian = isBigEndian;
                    const Bytes file = LibtiffFile::Write(format, Smooth(format));
                    EXPECT_EQ(Difference(file), "")
                        << samples << " samples, tiles of " << tileSize << (isPlanar ? ", planar" : "");
                }
}

TEST(TifJpeg, YCbCrOfLibtiff) {
    for (const std::uint16_t horizontal : {std::uint16_t{1}, std::uint16_t{2}})
        for (const std::uint16_t vertical : {std::uint16_t{1}, std::uint16_t{2}})
            for (const std::uint32_t tileSize : {0u, 32u})
                for (const bool isBigEndian : {false, true}) {
                    LibtiffFile::Format format = JpegFormat(3, 6, tileSize, false);
                    format.chroma = {horizontal, vertical};
                    format.isBigEndian = isBigEndian;
                    constexpr std::uint32_t jpegColorMode = 65538;
                    format.tags = {{jpegColorMode, 1}};
                    EXPECT_EQ(Difference(LibtiffFile::Write(format, Smooth(format))), "")
                        << horizontal << " x " << vertical << ", tiles of " << tileSize;
                }
}

/// Blocks of one sample each: nothing is left to rounding.
Bytes FlatBlocksOf(const LibtiffFile::Format& format) {
    Bytes rows;
    for (std::uint32_t y = 0; y < format.height; ++y)
        for (std::uint32_t x = 0; x < format.width; ++x)
            for (std::uint32_t s = 0; s < format.samples; ++s)
                rows.push_back(static_cast<std::uint8_t>((x / 8 * 37 + y / 8 * 91 + s * 60) % 256));
    return rows;
}

TEST(TifJpeg, OnlyYCbCrIsConverted) {
    for (const auto& [samples, photometric] : std::vector<std::pair<std::uint16_t, std::uint16_t>>{
             {std::uint16_t{3}, std::uint16_t{8}}, {3, 0}, {3, 1}, {4, 0}, {4, 1}, {3, 2}, {4, 2}, {4, 5}}) {
        const LibtiffFile::Format format = JpegFormat(samples, photometric, 0, false);
        const Bytes file = LibtiffFile::Write(format, FlatBlocksOf(format));
        LibtiffFile::Format found;
        const Bytes stored = LibtiffFile::Read(file, 0, found);
        ASSERT_EQ(stored.size(), FlatBlocksOf(format).size());
        // The same samples without compression.
        TifRecipe plain;
        plain.width = format.width;
        plain.height = format.height;
        plain.samples = samples;
        plain.photometric = photometric;
        plain.values.assign(stored.begin(), stored.end());
        EXPECT_EQ(TifLoad(file).Memory(), TifLoad(plain.Build()).Memory())
            << samples << " samples of photometric " << photometric;
    }
}

TEST(TifJpeg, InksOfLibtiff) {
    const LibtiffFile::Format format = JpegFormat(4, 5, 0, false);
    EXPECT_EQ(Difference(LibtiffFile::Write(format, Smooth(format))), "");
}

#endif

} // namespace
