#include "tests/codecs/JpgLossless.h"
#include "tests/codecs/JpgSegments.h"
#include "tests/codecs/LibtiffFile.h"
#include "tests/codecs/TifLoad.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

// JPEG in TIFF as TIFF 6.0, section 22, has it.

using Bytes = TifRecipe::Bytes;

namespace {

using namespace JpgSegments;

/// A file whose pieces lie one after the other, in the order in which they are put there.
struct OldJpeg {
    OldJpeg(std::uint32_t width, std::uint32_t height, std::uint32_t samples, std::uint32_t photometric) {
        recipe.width = width;
        recipe.height = height;
        recipe.samples = samples;
        recipe.photometric = photometric;
        recipe.compression = 6;
        recipe.tags[530] = {3, {1, 1}};
    }

    /// Where the piece lies.
    std::uint32_t Put(const Bytes& piece) {
        recipe.tiles.push_back(piece);
        m_end += static_cast<std::uint32_t>(piece.size());
        return m_end - static_cast<std::uint32_t>(piece.size());
    }

    OldJpeg& Strips(const std::vector<Bytes>& strips) {
        TifRecipe::Entry offsets{4}, sizes{4};
        for (const Bytes& strip : strips) {
            offsets.values.push_back(Put(strip));
            sizes.values.push_back(static_cast<std::uint32_t>(strip.size()));
        }
        recipe.tags[273] = offsets;
        recipe.tags[279] = sizes;
        return *this;
    }

    /// Tables as segments of a file of their own have them, by component.
    OldJpeg& Tables(std::uint16_t tag, const std::vector<Bytes>& segments) {
        TifRecipe::Entry offsets{4};
        // What comes before a table: marker, length and name.
        for (const Bytes& segment : segments)
            offsets.values.push_back(Put(Bytes(segment.begin() + 5, segment.end())));
        recipe.tags[tag] = offsets;
        return *this;
    }

    OldJpeg& FlatTables(std::size_t count) {
        Tables(519, std::vector<Bytes>(count, FlatQuantisation()));
        Tables(520, std::vector<Bytes>(count, FourBitCodes(0x00)));
        return Tables(521, std::vector<Bytes>(count, FourBitCodes(0x10)));
    }

    OldJpeg& Interchange(const Bytes& file) {
        recipe.tags[513] = {4, {Put(file)}};
        recipe.tags[514] = {4, {static_cast<std::uint32_t>(file.size())}};
        return *this;
    }

    Bytes Build() const { return recipe.Build(); }

    TifRecipe recipe;

private:
    std::uint32_t m_end = 8;
};

/// A grey file of 8 x 8 pixels of 128 and an eighth of the coefficient.
Bytes FlatJpeg(int coefficient) {
    return GreyFileUpToItsData(8, 8) + FlatBlocks({coefficient}) + end;
}

constexpr std::uint8_t greyOf64 = 128 + 64 / 8, greyOf72 = 128 + 72 / 8;

/// Two strips of a block each.
OldJpeg TwoStrips() {
    OldJpeg file(8, 16, 1, 1);
    file.recipe.rowsPerStrip = 8;
    return file;
}

void ExpectTwoStrips(const OldJpeg& file) {
    const TifLoad load(file.Build());
    EXPECT_FALSE(load.decoder.IsIncomplete());
    Bytes wanted(64, greyOf64);
    wanted.insert(wanted.end(), 64, greyOf72);
    EXPECT_EQ(load.Memory(), wanted);
}

/// Headers of two grey blocks, one below the other, without a scan.
Bytes HeadersOfTwoStrips() {
    return start + FlatQuantisation() + FourBitCodes(0x00) + FourBitCodes(0x10) + FrameHeader(0xC0, 8, 8, 16, {{1}});
}

#ifdef VARNOLITE_HAS_TIFF
Bytes GreysOfLibtiff(const OldJpeg& file) {
    const Bytes colors = LibtiffFile::ReadColors(file.Build());
    Bytes greys;
    for (std::size_t i = 0; i < colors.size(); i += 4)
        greys.push_back(colors[i]);
    return greys;
}
#endif

/// The only colour of the image; blue, green, red and alpha.
void ExpectColor(const OldJpeg& file, const Bytes& wanted, int tolerance, const std::string& what) {
    const TifLoad load(file.Build());
    EXPECT_FALSE(load.decoder.IsIncomplete()) << what;
    const Bytes had = load.Memory();
    ASSERT_EQ(had.size(), std::size_t{4} * file.recipe.width * file.recipe.height) << what;
    for (std::size_t i = 0; i < had.size(); ++i)
        ASSERT_LE(std::abs(had[i] - wanted[i % 4]), tolerance) << what << ", channel " << i % 4;
}

} // namespace

TEST(TifOldJpeg, FilesInInterchangeFormat) {
    OldJpeg file(8, 8, 1, 1);
    file.Strips({FlatJpeg(64)});
    file.recipe.tags[513] = {4, {8}};
    file.recipe.tags[514] = {4, {static_cast<std::uint32_t>(FlatJpeg(64).size())}};
    const Bytes wanted(64, greyOf64);
    EXPECT_EQ(TifLoad(file.Build()).Memory(), wanted);
    file.recipe.without = {514};
    EXPECT_EQ(TifLoad(file.Build()).Memory(), wanted) << "without a length";
    file.recipe.without = {273, 279};
    EXPECT_EQ(TifLoad(file.Build()).Memory(), wanted) << "without strips";
    file.recipe.without = {513, 514};
    EXPECT_EQ(TifLoad(file.Build()).Memory(), wanted) << "the strip itself is the file";
}

TEST(TifOldJpeg, StripsMayFollowTheirHeaders) {
    for (const Bytes& scan : {Bytes(), ScanHeader({1})})
        ExpectTwoStrips(
            TwoStrips().Strips({scan + FlatBlocks({64}), FlatBlocks({72})}).Interchange(HeadersOfTwoStrips()));
}

TEST(TifOldJpeg, AStripOfManyBlocksIsARestartInterval) {
    OldJpeg file(24, 24, 1, 1);
    file.recipe.rowsPerStrip = 8;
    file.Strips({FlatBlocks({64, 8, 0}), FlatBlocks({72, -8, 8}), FlatBlocks({64, 0, 0})});
    file.Interchange(start + FlatQuantisation() + FourBitCodes(0x00) + FourBitCodes(0x10) +
                     FrameHeader(0xC0, 8, 24, 24, {{1}}));
    const TifLoad load(file.Build());
    EXPECT_FALSE(load.decoder.IsIncomplete());
    const std::uint8_t greys[3][3] = {
        {greyOf64, greyOf72, greyOf72}, {greyOf72, greyOf64, greyOf72}, {greyOf64, greyOf64, greyOf64}};
    Bytes wanted;
    for (const auto& row : greys)
        for (unsigned y = 0; y < 8; ++y)
            for (const std::uint8_t grey : row)
                wanted.insert(wanted.end(), 8, grey);
    EXPECT_EQ(load.Memory(), wanted);
}

TEST(TifOldJpeg, BytesThatFillUpBeforeMarkersAreSkipped) {
    const Bytes fill{0xFF, 0xFF, 0xFF};
    const Bytes headers = start + fill + FlatQuantisation() + fill + FourBitCodes(0x00) + fill + FourBitCodes(0x10) +
                          fill + FrameHeader(0xC0, 8, 8, 16, {{1}});
    ExpectTwoStrips(TwoStrips().Strips({FlatBlocks({64}), FlatBlocks({72})}).Interchange(headers));
    OldJpeg whole = TwoStrips();
    whole.Interchange(headers + fill + ScanHeader({1}) + FlatBlocks({64, 8}) + end);
    whole.Strips({{}, {}});
    ExpectTwoStrips(whole);
    ExpectTwoStrips(TwoStrips().Strips({FlatBlocks({64}), FlatBlocks({72})}).Interchange(headers + fill));
}

TEST(TifOldJpeg, TablesMayBeTags) {
    OldJpeg file = TwoStrips();
    file.Strips({FlatBlocks({64}), FlatBlocks({72})}).FlatTables(1);
    ExpectTwoStrips(file);
#ifdef VARNOLITE_HAS_TIFF
    EXPECT_EQ(GreysOfLibtiff(file), TifLoad(file.Build()).Memory()) << "the library's own reading";
#endif
    file.recipe.tags[520] = {4, {0xFFFFFFF0}};
    EXPECT_EQ(TifFailure(file.Build()), "") << "a table beyond the file";
}

TEST(TifOldJpeg, TablesBeyondTheFileDoNotMatterToAWholeInterchangeFile) {
    OldJpeg file(8, 8, 1, 1);
    file.Interchange(FlatJpeg(64));
    for (const std::uint16_t tag : {std::uint16_t{519}, std::uint16_t{520}, std::uint16_t{521}})
        file.recipe.tags[tag] = {4, {0xFFFFFFF0}};
    const TifLoad load(file.Build());
    EXPECT_FALSE(load.decoder.IsIncomplete());
    EXPECT_EQ(load.Memory(), Bytes(64, greyOf64));
}

TEST(TifOldJpeg, TablesThatStandApartAreJoinedWithTheInterchangeFile) {
    const Bytes tables = start + FlatQuantisation() + FourBitCodes(0x00) + FourBitCodes(0x10);
    for (const Bytes& all : {tables, tables + end}) {
        OldJpeg file(8, 8, 1, 1);
        file.Interchange(start + FrameHeader(0xC0, 8, 8, 8, {{1}}) + ScanHeader({1}) + FlatBlocks({64}) + end);
        EXPECT_TRUE(TifLoad(file.Build()).decoder.IsIncomplete()) << "the tables are needed";
        file.recipe.tags[347] = {7, std::vector<std::uint32_t>(all.begin(), all.end())};
        const TifLoad load(file.Build());
        EXPECT_FALSE(load.decoder.IsIncomplete());
        EXPECT_EQ(load.Memory(), Bytes(64, greyOf64));
    }
}

TEST(TifOldJpeg, TheRestartIntervalMayBeATag) {
    OldJpeg file(24, 8, 1, 1);
    const Bytes first{0xFF, 0xD0}, second{0xFF, 0xD1};
    file.Strips({FlatBlocks({64}) + first + FlatBlocks({72}) + second + FlatBlocks({-8})}).FlatTables(1);
    EXPECT_TRUE(TifLoad(file.Build()).decoder.IsIncomplete());
    file.recipe.tags[515] = {3, {1}};
    const TifLoad load(file.Build());
    EXPECT_FALSE(load.decoder.IsIncomplete());
    Bytes wanted;
    for (unsigned i = 0; i < 8; ++i)
        for (const std::uint8_t grey : {greyOf64, greyOf72, std::uint8_t{127}})
            wanted.insert(wanted.end(), 8, grey);
    EXPECT_EQ(load.Memory(), wanted);
#ifdef VARNOLITE_HAS_TIFF
    EXPECT_EQ(GreysOfLibtiff(file), wanted) << "the library's own reading";
#endif
}

TEST(TifOldJpeg, ColoursAreYCbCrWhateverTheFileSays) {
    // Y, Cb and Cr are 136, 144 and 160; ITU T.871 makes 164.352, 107.642 and 180.864 of them.
    const Bytes wanted{164, 108, 181, 255};
    for (const bool hasPhotometric : {false, true})
        for (const std::uint32_t photometric : {2u, 6u})
            for (const bool hasSamples : {false, true})
                for (const unsigned factor : {1u, 2u}) {
                    OldJpeg file(8, 8, 3, photometric);
                    file.Strips({FlatBlocks(factor == 1 ? std::vector<int>{64, 128, 256}
                                                        : std::vector<int>{64, 0, 0, 0, 128, 256})});
                    file.FlatTables(3);
                    if (factor == 2)
                        file.recipe.tags.erase(530);
                    if (!hasPhotometric)
                        file.recipe.without.insert(262);
                    if (!hasSamples)
                        file.recipe.without.insert(277);
                    const std::string what = "photometric " + std::to_string(hasPhotometric ? photometric : 0) +
                                             (hasSamples ? "" : ", no samples") + ", factor " + std::to_string(factor);
                    // The JPEG decoder cuts what chrominance adds.
                    ExpectColor(file, wanted, 1, what);
#ifdef VARNOLITE_HAS_TIFF
                    const Bytes colors = LibtiffFile::ReadColors(file.Build());
                    ASSERT_EQ(colors.size(), 256u) << what;
                    EXPECT_EQ(Bytes(colors.begin(), colors.begin() + 4), (Bytes{181, 108, 164, 255})) << what;
#endif
                }
    OldJpeg grey(8, 8, 1, 1);
    grey.Strips({FlatBlocks({64})}).FlatTables(1).recipe.without = {262};
    EXPECT_EQ(TifLoad(grey.Build()).Memory(), Bytes(64, greyOf64)) << "one sample has no colour";
}

TEST(TifOldJpeg, ColoursOfAnInterchangeFileAreYCbCrToo) {
    for (const std::uint32_t photometric : {2u, 6u}) {
        OldJpeg file(8, 8, 3, photometric);
        file.Interchange(start + FlatQuantisation() + FourBitCodes(0x00) + FourBitCodes(0x10) +
                         FrameHeader(0xC0, 8, 8, 8, {{1}, {2}, {3}}) + ScanHeader({1, 2, 3}) +
                         FlatBlocks({64, 128, 256}) + end);
        ExpectColor(file, {164, 108, 181, 255}, 1, std::to_string(photometric));
    }
}

namespace {

/// All numbers of a block are divided by it.
Bytes QuantisationBy(std::uint8_t divisor) {
    return Segment(0xDB, Bytes{0x00} + Bytes(64, divisor));
}

/// A block of the codes of eight bits.
Bytes FlatBlockOfEightBits(int coefficient) {
    JpgBitWriter writer;
    writer.Put(JpgBitWriter::SizeOf(coefficient), 8);
    writer.PutNumber(coefficient);
    writer.Put(0, 8);
    return writer.Take();
}

} // namespace

TEST(TifOldJpeg, PlanesHaveTheTablesOfTheirComponents) {
    OldJpeg file(8, 8, 3, 2);
    file.recipe.isPlanar = true;
    file.Strips({FlatBlocks({64}), FlatBlockOfEightBits(64), FlatBlocks({64})});
    file.Tables(519, {QuantisationBy(1), QuantisationBy(2), QuantisationBy(3)});
    file.Tables(520, {FourBitCodes(0x00), EightBitCodes(0x00), FourBitCodes(0x00)});
    file.Tables(521, {FourBitCodes(0x10), EightBitCodes(0x10), FourBitCodes(0x10)});
    ExpectColor(file, {128 + 3 * 8, 128 + 2 * 8, 128 + 8, 255}, 0, "own tables");
    OldJpeg fewer(8, 8, 3, 2);
    fewer.recipe.isPlanar = true;
    fewer.Strips({FlatBlocks({64}), FlatBlocks({64}), FlatBlocks({64})}).FlatTables(1);
    fewer.Tables(519, {QuantisationBy(1), QuantisationBy(2)});
    ExpectColor(fewer, {144, 144, 136, 255}, 0, "a component without a table shares the one before");
    fewer.recipe.tags[519].values.insert(fewer.recipe.tags[519].values.begin() + 1, 0);
    ExpectColor(fewer, {144, 136, 136, 255}, 0, "an offset of 0 is none");
}

TEST(TifOldJpeg, InksInPlanes) {
    OldJpeg file(8, 8, 4, 5);
    file.recipe.isPlanar = true;
    const auto ink = [](int value) { return FlatBlocks({(value - 128) * 8}); };
    file.Strips({ink(255), ink(0), ink(51), ink(0)}).FlatTables(4);
    ExpectColor(file, {204, 255, 0, 255}, 0, "");
}

TEST(TifOldJpeg, AnInterchangeFileBringsAllPlanes) {
    const Bytes tables = start + FlatQuantisation() + FourBitCodes(0x00) + FourBitCodes(0x10);
    const Bytes headers = tables + FrameHeader(0xC0, 8, 8, 16, {{1}, {2}, {3}});
    const Bytes wanted{128 + 32, 128 + 16, 128 + 8, 255};
    OldJpeg together(8, 16, 3, 2);
    together.recipe.isPlanar = true;
    together.Interchange(headers + ScanHeader({1, 2, 3}) + FlatBlocks({64, 128, 256, 0, 0, 0}) + end);
    ExpectColor(together, wanted, 0, "one scan");
    OldJpeg apart(8, 16, 3, 2);
    apart.recipe.isPlanar = true;
    apart.Interchange(headers + ScanHeader({1}) + FlatBlocks({64, 0}) + ScanHeader({2}) + FlatBlocks({128, 0}) +
                      ScanHeader({3}) + FlatBlocks({256, 0}) + end);
    ExpectColor(apart, wanted, 0, "scans");
    for (const bool hasScanHeaders : {false, true}) {
        OldJpeg strips(16, 16, 3, 2);
        strips.recipe.isPlanar = true;
        strips.recipe.rowsPerStrip = 8;
        const auto scan = [&](std::uint8_t component) { return hasScanHeaders ? ScanHeader({component}) : Bytes(); };
        const Bytes first = FlatBlocks({64, 0}), second = FlatBlocks({128, 0}), third = FlatBlocks({256, 0});
        strips.Strips({scan(1) + first, first, scan(2) + second, second, scan(3) + third, third});
        strips.Interchange(tables + FrameHeader(0xC0, 8, 16, 16, {{1}, {2}, {3}}));
        ExpectColor(strips, wanted, 0, hasScanHeaders ? "strips with the headers of scans" : "strips");
    }
    together.recipe.photometric = 6;
    EXPECT_EQ(TifFailure(together.Build()), "YCbCr with PlanarConfiguartion==2 is not supported");
}

TEST(TifOldJpeg, AScanWithoutAHeaderUsesTheTablesThatThereAre) {
    const auto put = [](JpgBitWriter& writer, int coefficient, unsigned codeBits) {
        writer.Put(JpgBitWriter::SizeOf(coefficient), codeBits);
        writer.PutNumber(coefficient);
        writer.Put(0, codeBits);
    };
    JpgBitWriter writer;
    put(writer, 64, 4);
    put(writer, 128, 8);
    put(writer, 256, 8);
    // The second tables serve both components of colour.
    OldJpeg colors(8, 8, 3, 6);
    colors.Strips({writer.Take()});
    colors.Interchange(start + FlatQuantisation() + FourBitCodes(0x00) + FourBitCodes(0x10) + EightBitCodes(0x01) +
                       EightBitCodes(0x11) + FrameHeader(0xC0, 8, 8, 8, {{1}, {2}, {3}}));
    ExpectColor(colors, {164, 108, 181, 255}, 1, "");
}

namespace {

/// The data of a lossless file and the table in front of its frame.
struct LosslessPieces {
    explicit LosslessPieces(const Bytes& file) {
        const auto segmentAt = [&](std::size_t place) {
            return std::size_t{2} + (std::size_t{file[place + 2]} << 8 | file[place + 3]);
        };
        const std::size_t frame = 2 + segmentAt(2), scan = frame + segmentAt(frame);
        table.assign(file.begin() + 2, file.begin() + static_cast<std::ptrdiff_t>(frame));
        data.assign(file.begin() + static_cast<std::ptrdiff_t>(scan + segmentAt(scan)), file.end() - 2);
    }
    Bytes table, data;
};

/// Blue, green, red and alpha; or grey.
Bytes ColorsOf(const std::vector<JpgLossless::Plane>& planes) {
    Bytes colors;
    for (std::size_t i = 0; i < planes[0].size(); ++i) {
        for (std::size_t plane = planes.size(); plane-- != 0;)
            colors.push_back(static_cast<std::uint8_t>(planes[plane][i]));
        if (planes.size() == 3)
            colors.push_back(255);
    }
    return colors;
}

OldJpeg LosslessFile(const JpgLossless::Recipe& recipe, std::uint32_t photometric) {
    OldJpeg file(recipe.width, recipe.height, recipe.components, photometric);
    file.recipe.tags[512] = {3, {14}};
    file.recipe.tags[517] = {3, std::vector<std::uint32_t>(recipe.components, recipe.predictor)};
    file.recipe.tags[518] = {3, std::vector<std::uint32_t>(recipe.components, recipe.pointTransform)};
    return file;
}

} // namespace

TEST(TifOldJpeg, LosslessDataOfGreyAndRgb) {
    for (const unsigned components : {1u, 3u})
        for (unsigned predictor = 1; predictor <= 7; ++predictor)
            for (const unsigned pointTransform : {0u, 2u}) {
                JpgLossless::Recipe recipe;
                recipe.components = components;
                recipe.predictor = predictor;
                recipe.pointTransform = pointTransform;
                const std::vector<JpgLossless::Plane> planes = JpgLossless::RandomPlanes(recipe);
                const Bytes whole = JpgLossless::EncodedFile(recipe, planes);
                const LosslessPieces pieces(whole);
                OldJpeg byTags = LosslessFile(recipe, components == 3 ? 2 : 1);
                byTags.Strips({pieces.data}).Tables(520, std::vector<Bytes>(components, pieces.table));
                OldJpeg interchange = LosslessFile(recipe, components == 3 ? 2 : 1);
                interchange.Interchange(whole);
                for (const OldJpeg& file : {byTags, interchange}) {
                    const TifLoad load(file.Build());
                    EXPECT_FALSE(load.decoder.IsIncomplete());
                    EXPECT_EQ(load.Memory(), ColorsOf(planes))
                        << components << " components, predictor " << predictor << " and " << pointTransform;
                }
            }
}

TEST(TifOldJpeg, LosslessPlanesHaveTheirOwnPredictors) {
    JpgLossless::Recipe recipe;
    std::vector<JpgLossless::Plane> planes;
    std::vector<Bytes> strips, tables;
    for (const unsigned predictor : {1u, 4u, 7u}) {
        recipe.predictor = predictor;
        planes.push_back(JpgLossless::RandomPlanes(recipe)[0]);
        const LosslessPieces pieces(JpgLossless::EncodedFile(recipe, {planes.back()}));
        strips.push_back(pieces.data);
        tables.push_back(pieces.table);
    }
    recipe.components = 3;
    OldJpeg file = LosslessFile(recipe, 2);
    file.recipe.isPlanar = true;
    file.recipe.tags[517] = {3, {1, 4, 7}};
    file.Strips(strips).Tables(520, tables);
    const TifLoad load(file.Build());
    EXPECT_FALSE(load.decoder.IsIncomplete());
    EXPECT_EQ(load.Memory(), ColorsOf(planes));
}

TEST(TifOldJpeg, LosslessYCbCrIsConverted) {
    JpgLossless::Recipe recipe;
    recipe.components = 3;
    const std::vector<JpgLossless::Plane> planes = JpgLossless::RandomPlanes(recipe);
    const Bytes whole = JpgLossless::EncodedFile(recipe, planes);
    const LosslessPieces pieces(whole);
    // The same samples without compression.
    TifRecipe plain;
    plain.width = recipe.width;
    plain.height = recipe.height;
    plain.samples = 3;
    plain.photometric = 6;
    plain.tags[530] = {3, {1, 1}};
    for (std::size_t i = 0; i < planes[0].size(); ++i)
        plain.values.insert(plain.values.end(), {planes[0][i], planes[1][i], planes[2][i]});
    const Bytes wanted = TifLoad(plain.Build()).Memory();
    OldJpeg byTags = LosslessFile(recipe, 6);
    byTags.Strips({pieces.data}).Tables(520, {pieces.table, pieces.table, pieces.table});
    EXPECT_EQ(TifLoad(byTags.Build()).Memory(), wanted);
    TifRecipe usual = plain;
    usual.compression = 7;
    usual.tiles = {whole};
    EXPECT_EQ(TifLoad(usual.Build()).Memory(), wanted) << "in the newer scheme";
}
