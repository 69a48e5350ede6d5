#include "codecs/bmp/FileHeader.h"
#include "codecs/bmp/NormalHeader.h"
#include "tests/codecs/BmpLoad.h"

#include <gmock/gmock.h>

using namespace Quorvex;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

using Strings = std::vector<std::string>;

// Two pixels, one row, in whatever generation of header.
BmpRecipe TwoPixels(std::uint32_t headerSize) {
    return {.headerSize = headerSize, .width = 2, .bits = 24, .rows = {{1, 2, 3, 4, 5, 6}}};
}

const Strings twoPixels = {"FF030201 FF060504"};
const std::vector<std::uint32_t> generations = {0x0C, 0x10, 0x14, 0x18, 0x20, 0x24, 0x28, 0x2A, 0x2C,
                                                0x2E, 0x30, 0x34, 0x38, 0x3C, 0x40, 0x6C, 0x7C};

class BmpHeaderGeneration : public testing::TestWithParam<std::uint32_t> {};

/// Calls check(name, description) for the composite and all that lies in it.
template <class Check>
void ForEachDescription(const CompositeOfProperties& composite, const Check& check) {
    check(composite.GetName(), composite.GetDescription());
    for (const auto& entry : composite.GetEntries()) {
        if (const auto nested = entry.DynamicCast<CompositeOfProperties::AbstractCompositeInfo>())
            ForEachDescription(nested->GetComposite(), check);
        else
            check(entry->GetName(), entry->GetDescription());
    }
}

// The lines of the info header, without those of the file header and with the key stripped.
Strings InfoFields(const Bytes& file, const std::string& key) {
    Strings result;
    for (const std::string& line : BmpLoad(file).Fields())
        if (line.rfind(key + "/", 0) == 0)
            result.push_back(line.substr(key.size() + 1));
    return result;
}

} // namespace

TEST_P(BmpHeaderGeneration, DecodesWithFileHeader) {
    EXPECT_EQ(BmpLoad(TwoPixels(GetParam()).Build()).Rows(), twoPixels);
}

TEST_P(BmpHeaderGeneration, DecodesWithoutFileHeader) {
    BmpRecipe recipe = TwoPixels(GetParam());
    recipe.hasFileHeader = false;
    EXPECT_EQ(BmpLoad(recipe.Build()).Rows(), twoPixels);
    EXPECT_EQ(BmpLoad(recipe.Build(), TestStream::Manner::Memory).Rows(), twoPixels);
}

TEST_P(BmpHeaderGeneration, CutAnywhereInTheHeadersFailsWithEmptyText) {
    const BmpRecipe recipe = TwoPixels(GetParam());
    const Bytes file = recipe.Build();
    for (std::size_t length = 0; length < recipe.PixelOffset(); ++length) {
        const Bytes cut(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_EQ(LoadFailure(cut), "") << length;
        EXPECT_THROW(BmpLoad(cut, TestStream::Manner::Memory), Exception) << length;
    }
}

TEST_P(BmpHeaderGeneration, StoresItsSizeAsTheFirstField) {
    const SharedPtr<ET::Img::InfoHeader> header = ET::Img::CreateInfoHeader(GetParam());
    EXPECT_EQ(header->GetEntries()[0]->ToString().ToStdString(), std::to_string(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(All, BmpHeaderGeneration, testing::ValuesIn(generations));

TEST(BmpHeader, SizeOfNoGenerationFailsWithEmptyText) {
    for (std::uint32_t size = 0; size <= 0x200; ++size) {
        Bytes file = TwoPixels(0x7C).Build();
        file[14] = static_cast<std::uint8_t>(size);
        file[15] = static_cast<std::uint8_t>(size >> 8);
        if (std::find(generations.begin(), generations.end(), size) == generations.end()) {
            EXPECT_EQ(LoadFailure(file), "") << size;
        }
    }
}

TEST(BmpHeader, OtherSignaturesAreReadAsSizeAndFail) {
    for (const char* signature : {"BA", "CI", "CP", "IC", "PT", "bm", "MB"}) {
        Bytes file = TwoPixels(0x28).Build();
        std::copy(signature, signature + 2, file.begin());
        EXPECT_EQ(LoadFailure(file), "") << signature;
    }
}

TEST(BmpHeader, FileHeaderFieldsInOrder) {
    const Strings fields = BmpLoad(TwoPixels(0x28).Build()).Fields();
    ASSERT_GT(fields.size(), 5u);
    EXPECT_THAT(Strings(fields.begin(), fields.begin() + 5),
                ElementsAre("BITMAPFILEHEADER/usType = 19778", "BITMAPFILEHEADER/cbSize = 62",
                            "BITMAPFILEHEADER/xHotspot = -1", "BITMAPFILEHEADER/yHotspot = 5",
                            "BITMAPFILEHEADER/offBits = 54"));
}

TEST(BmpHeader, BareBitmapHasNoFileHeaderFields) {
    BmpRecipe recipe = TwoPixels(0x0C);
    recipe.hasFileHeader = false;
    EXPECT_THAT(BmpLoad(recipe.Build()).Fields(),
                ElementsAre("BITMAPINFOHEADER/cbFix = 12", "BITMAPINFOHEADER/cx = 2", "BITMAPINFOHEADER/cy = 1",
                            "BITMAPINFOHEADER/cPlanes = 1", "BITMAPINFOHEADER/cBitCount = 24"));
}

TEST(BmpHeader, Os2HeaderOf64BytesHasAllFields) {
    BmpRecipe recipe = TwoPixels(0x40);
    recipe.xResolution = 2835;
    recipe.yResolution = 5670;
    recipe.colorsUsed = 3;
    EXPECT_THAT(InfoFields(recipe.Build(), "BITMAPINFOHEADER2"),
                ElementsAre("cbFix = 64", "cx = 2", "cy = 1", "cPlanes = 1", "cBitCount = 24", "ulCompression = 0",
                            "cbImage = 8", "cxResolution = 2835", "cyResolution = 5670", "cclrUsed = 3",
                            "cclrImportant = 7", "usUnits = 1", "usReserved = 2", "usRecording = 3", "usRendering = 4",
                            "cSize1 = 17", "cSize2 = 34", "ulColorEncoding = 51", "ulIdentifier = 68"));
}

TEST(BmpHeader, ShorterOs2HeadersEndWithTheLastFieldTheyHold) {
    const std::pair<std::uint32_t, std::string> lastFields[] = {
        {0x10, "cBitCount = 24"},       {0x14, "ulCompression = 0"}, {0x18, "cbImage = 8"},
        {0x20, "cyResolution = 0"},     {0x24, "cclrUsed = 0"},      {0x2A, "usUnits = 1"},
        {0x2C, "usReserved = 2"},       {0x2E, "usRecording = 3"},   {0x30, "usRendering = 4"},
        {0x3C, "ulColorEncoding = 51"}, {0x40, "ulIdentifier = 68"}};
    for (const auto& [size, last] : lastFields) {
        const Strings fields = InfoFields(TwoPixels(size).Build(), "BITMAPINFOHEADER2");
        ASSERT_FALSE(fields.empty()) << size;
        EXPECT_EQ(fields.back(), last) << size;
        EXPECT_EQ(fields.front(), "cbFix = " + std::to_string(size));
    }
}

TEST(BmpHeader, WindowsHeaderOf40BytesHasElevenFields) {
    BmpRecipe recipe = TwoPixels(0x28);
    recipe.height = -1;
    recipe.xResolution = -5;
    EXPECT_THAT(InfoFields(recipe.Build(), "BITMAPINFOHEADER"),
                ElementsAre("biSize = 40", "biWidth = 2", "biHeight = -1", "biPlanes = 1", "biBitCount = 24",
                            "biCompression = 0", "biSizeImage = 8", "biXPelsPerMeter = -5", "biYPelsPerMeter = 0",
                            "biClrUsed = 0", "biClrImportant = 7"));
}

TEST(BmpHeader, HeadersOf52And56BytesAppendTheMasks) {
    BmpRecipe recipe = TwoPixels(0x34);
    recipe.masks = {1, 2, 4, 8};
    const Strings v2 = InfoFields(recipe.Build(), "BITMAPV2INFOHEADER");
    ASSERT_EQ(v2.size(), 14u);
    EXPECT_THAT(Strings(v2.begin() + 11, v2.end()), ElementsAre("biRedMask = 1", "biGreenMask = 2", "biBlueMask = 4"));
    recipe.headerSize = 0x38;
    const Strings v3 = InfoFields(recipe.Build(), "BITMAPV3INFOHEADER");
    ASSERT_EQ(v3.size(), 15u);
    EXPECT_EQ(v3.back(), "biAlphaMask = 8");
}

TEST(BmpHeader, HeaderOf108BytesHasColourSpaceEndpointsAndGamma) {
    EXPECT_THAT(InfoFields(TwoPixels(0x6C).Build(), "BITMAPV4HEADER"),
                ElementsAre("bV4Size = 108", "bV4Width = 2", "bV4Height = 1", "bV4Planes = 1", "bV4BitCount = 24",
                            "bV4Compression = 0", "bV4SizeImage = 8", "bV4XPelsPerMeter = 0", "bV4YPelsPerMeter = 0",
                            "bV4ClrUsed = 0", "bV4ClrImportant = 7", "bV4RedMask = 0", "bV4GreenMask = 0",
                            "bV4BlueMask = 0", "bV4AlphaMask = 0", "bV4CSType = 1934772034",
                            "bV4Endpoints/ciexyzRed/ciexyzX = 0.125", "bV4Endpoints/ciexyzRed/ciexyzY = 0.25",
                            "bV4Endpoints/ciexyzRed/ciexyzZ = 0.375", "bV4Endpoints/ciexyzGreen/ciexyzX = 0.5",
                            "bV4Endpoints/ciexyzGreen/ciexyzY = 0.625", "bV4Endpoints/ciexyzGreen/ciexyzZ = 0.75",
                            "bV4Endpoints/ciexyzBlue/ciexyzX = 0.875", "bV4Endpoints/ciexyzBlue/ciexyzY = 1",
                            "bV4Endpoints/ciexyzBlue/ciexyzZ = 1.125", "bV4GammaRed = 257", "bV4GammaGreen = 258",
                            "bV4GammaBlue = 259"));
}

TEST(BmpHeader, HeaderOf124BytesAddsIntentAndProfile) {
    BmpRecipe recipe = TwoPixels(0x7C);
    recipe.xResolution = -5;
    recipe.yResolution = 6;
    recipe.colorsUsed = 3;
    recipe.masks = {1, 2, 4, 8};
    EXPECT_THAT(InfoFields(recipe.Build(), "BITMAPV5HEADER"),
                ElementsAre("bV5Size = 124", "bV5Width = 2", "bV5Height = 1", "bV5Planes = 1", "bV5BitCount = 24",
                            "bV5Compression = 0", "bV5SizeImage = 8", "bV5XPelsPerMeter = -5", "bV5YPelsPerMeter = 6",
                            "bV5ClrUsed = 3", "bV5ClrImportant = 7", "bV5RedMask = 1", "bV5GreenMask = 2",
                            "bV5BlueMask = 4", "bV5AlphaMask = 8", "bV5CSType = 1934772034",
                            "bV5Endpoints/ciexyzRed/ciexyzX = 0.125", "bV5Endpoints/ciexyzRed/ciexyzY = 0.25",
                            "bV5Endpoints/ciexyzRed/ciexyzZ = 0.375", "bV5Endpoints/ciexyzGreen/ciexyzX = 0.5",
                            "bV5Endpoints/ciexyzGreen/ciexyzY = 0.625", "bV5Endpoints/ciexyzGreen/ciexyzZ = 0.75",
                            "bV5Endpoints/ciexyzBlue/ciexyzX = 0.875", "bV5Endpoints/ciexyzBlue/ciexyzY = 1",
                            "bV5Endpoints/ciexyzBlue/ciexyzZ = 1.125", "bV5GammaRed = 257", "bV5GammaGreen = 258",
                            "bV5GammaBlue = 259", "bV5Intent = 4", "bV5ProfileData = 513", "bV5ProfileSize = 514",
                            "bV5Reserved = 515"));
}

TEST(BmpHeader, EveryGenerationFillsTheNormalForm) {
    for (const std::uint32_t size : generations) {
        BmpRecipe recipe = TwoPixels(size);
        recipe.xResolution = 100;
        recipe.yResolution = 200;
        recipe.colorsUsed = 3;
        recipe.masks = {1, 2, 4, 8};
        TestStream stream(recipe.Build());
        CompositeOfProperties root;
        ET::Img::NormalHeader header;
        ReadHeaders(stream, root, header);
        const bool isOs2 = size != 0x28 && size != 0x34 && size != 0x38 && size < 0x6C;
        const auto inOs2From = [&](std::uint32_t length, std::uint32_t value) {
            return !isOs2 || size >= length ? value : 0;
        };
        const auto inWindowsFrom = [&](std::uint32_t length, std::uint32_t value) {
            return !isOs2 && size >= length ? value : 0;
        };
        const auto& fields = header.fields;
        EXPECT_EQ(header.width, 2u) << size;
        EXPECT_EQ(header.height, 1u) << size;
        EXPECT_EQ(header.headerBytes, size);
        EXPECT_EQ(header.offBits, 14 + size);
        EXPECT_EQ(fields.biSize.Get(), size);
        EXPECT_EQ(fields.biWidth.Get(), 2) << size;
        EXPECT_EQ(fields.biHeight.Get(), 1) << size;
        EXPECT_EQ(fields.biPlanes.Get(), 1) << size;
        EXPECT_EQ(fields.biBitCount.Get(), 24) << size;
        EXPECT_EQ(fields.biCompression.Get(), 0u) << size;
        EXPECT_EQ(fields.biSizeImage.Get(), inOs2From(0x18, 8)) << size;
        EXPECT_EQ(fields.biXPelsPerMeter.Get(), static_cast<std::int32_t>(inOs2From(0x20, 100))) << size;
        EXPECT_EQ(fields.biYPelsPerMeter.Get(), static_cast<std::int32_t>(inOs2From(0x20, 200))) << size;
        EXPECT_EQ(fields.biClrUsed.Get(), inOs2From(0x24, 3)) << size;
        EXPECT_EQ(fields.biClrImportant.Get(), inOs2From(0x28, 7)) << size;
        EXPECT_EQ(fields.biRedMask.Get(), inWindowsFrom(0x34, 1)) << size;
        EXPECT_EQ(fields.biGreenMask.Get(), inWindowsFrom(0x34, 2)) << size;
        EXPECT_EQ(fields.biBlueMask.Get(), inWindowsFrom(0x34, 4)) << size;
        EXPECT_EQ(fields.biAlphaMask.Get(), inWindowsFrom(0x38, 8)) << size;
    }
}

TEST(BmpHeader, Size28InAnOs2FileIsReadAsTheWindowsHeader) {
    EXPECT_THAT(BmpLoad(TwoPixels(0x28).Build()).Fields(), testing::Contains("BITMAPINFOHEADER/biClrImportant = 7"));
}

TEST(BmpHeader, WindowsFieldsExplainThemselvesAndOs2FieldsDoNot) {
    for (const std::uint32_t size : {0x28u, 0x34u, 0x38u, 0x6Cu, 0x7Cu})
        ForEachDescription(*ET::Img::CreateInfoHeader(size), [](const std::string& name, const String& description) {
            EXPECT_FALSE(description.IsEmpty()) << name;
        });
    for (const std::uint32_t size : {0x0Cu, 0x40u})
        ForEachDescription(*ET::Img::CreateInfoHeader(size), [](const std::string& name, const String& description) {
            EXPECT_TRUE(description.IsEmpty()) << name;
        });
    ForEachDescription(ET::Img::BITMAPFILEHEADER(), [](const std::string& name, const String& description) {
        EXPECT_TRUE(description.IsEmpty()) << name;
    });
}

TEST(BmpHeader, DescriptionsHaveTheirFixedTexts) {
    const auto header = ET::Img::CreateInfoHeader(0x6C);
    const auto& entries = header->GetEntries();
    EXPECT_STREQ(entries[0]->GetDescription().Narrow(), "The number of bytes required by the structure.");
    EXPECT_STREQ(entries[3]->GetDescription().Narrow(),
                 "The number of planes for the target device. This value must be set to 1.");
    EXPECT_STREQ(entries[17]->GetDescription().Narrow(), "Toned response curve for red.");
    const auto& endpoints = dynamic_cast<const CompositeOfProperties::AbstractCompositeInfo&>(*entries[16]);
    const auto& red = *endpoints.GetComposite().GetEntries()[0];
    EXPECT_STREQ(red.GetDescription().Narrow(), "The xyz coordinates of red endpoint.");
    const auto& redInfo = dynamic_cast<const CompositeOfProperties::AbstractCompositeInfo&>(red);
    EXPECT_STREQ(redInfo.GetComposite().GetEntries()[0]->GetDescription().Narrow(),
                 "The x coordinate in fix point (2.30).");
    const auto longest = ET::Img::CreateInfoHeader(0x7C);
    for (const auto& entry : longest->GetEntries()) {
        if (entry->GetName() == "bV5CSType" || entry->GetName() == "bV5Intent") {
            EXPECT_THAT(entry->GetDescription().Narrow(), HasSubstr("<table>")) << entry->GetName();
        }
    }
}

TEST(BmpHeader, ImageInfoComesFromTheHeaderPassAlone) {
    BmpRecipe recipe = TwoPixels(0x28);
    recipe.compression = 5; // Fails behind the headers.
    ET::Img::BMPDecoder decoder(MakeShared<TestStream>(recipe.Build()));
    const ET::Img::ImageInfo info = decoder.GetInfo(0);
    EXPECT_EQ(info.Width, 2u);
    EXPECT_EQ(info.Height, 1u);
    EXPECT_EQ(info.BitsPerPixel, 24u);
    EXPECT_EQ(info.AllocatedWidth, 0u);
    EXPECT_EQ(info.AllocatedHeight, 0u);
    EXPECT_EQ(info.ColorType, 14u);
}

TEST(BmpHeader, HeaderPassReadsNoPixelAndNoPalette) {
    BmpRecipe recipe{.width = 2, .bits = 8, .palette = std::vector<std::uint32_t>(256), .rows = {{0, 1}}};
    const auto stream = MakeShared<TestStream>(recipe.Build());
    ET::Img::BMPDecoder(stream).GetInfo(0);
    EXPECT_LE(stream->bytesRead, 2u + 14 + 40);
}

TEST(BmpHeader, NegativeSizesCountAsTheirMagnitude) {
    BmpRecipe recipe = TwoPixels(0x28);
    recipe.width = -2;
    const BmpLoad load(recipe.Build());
    EXPECT_EQ(load.Rows(), twoPixels);
    EXPECT_FALSE(load.decoder->IsIncomplete());
}

TEST(BmpHeader, Os2SizesHaveNoSign) {
    ET::Img::BMPDecoder core(MakeShared<TestStream>(BmpRecipe{.headerSize = 0x0C, .width = -1, .height = -2}.Build()));
    EXPECT_EQ(core.GetInfo(0).Width, 0xFFFFu);
    EXPECT_EQ(core.GetInfo(0).Height, 0xFFFEu);
    ET::Img::BMPDecoder second(
        MakeShared<TestStream>(BmpRecipe{.headerSize = 0x40, .width = -1, .height = -2}.Build()));
    EXPECT_EQ(second.GetInfo(0).Width, 0xFFFFFFFFu);
    EXPECT_EQ(second.GetInfo(0).Height, 0xFFFFFFFEu);
}

TEST(BmpHeader, ResolutionsGiveThePixelAspect) {
    BmpRecipe recipe = TwoPixels(0x28);
    recipe.xResolution = 2835;
    recipe.yResolution = 5670;
    const BmpLoad load(recipe.Build());
    EXPECT_EQ(load.image->PixelScaleX, 2.0);
    EXPECT_EQ(load.image->PixelScaleY, 1.0);
    recipe.xResolution = 0;
    const BmpLoad unknown(recipe.Build());
    EXPECT_EQ(unknown.image->PixelScaleX, 1.0);
    EXPECT_EQ(unknown.image->PixelScaleY, 1.0);
}

TEST(BmpHeader, ResolutionsOfOs2HeadersCountToo) {
    BmpRecipe recipe = TwoPixels(0x20);
    recipe.xResolution = 3000;
    recipe.yResolution = 1000;
    EXPECT_EQ(BmpLoad(recipe.Build()).image->PixelScaleY, 3.0);
    recipe.headerSize = 0x18; // Ends before the resolutions.
    EXPECT_EQ(BmpLoad(recipe.Build()).image->PixelScaleY, 1.0);
}

TEST(BmpHeader, PropertiesAreNullBeforeTheFirstPass) {
    ET::Img::BMPDecoder decoder(MakeShared<TestStream>(TwoPixels(0x28).Build()));
    EXPECT_EQ(decoder.GetProperties(), nullptr);
    decoder.GetInfo(0);
    ASSERT_NE(decoder.GetProperties(), nullptr);
    EXPECT_EQ(decoder.GetCount(), 1u);
    EXPECT_EQ(decoder.GetDefaultIndex(), 0u);
    EXPECT_EQ(decoder.GetOrientation(), 1u);
}

TEST(BmpHeader, EachPassRebuildsTheProperties) {
    ET::Img::BMPDecoder decoder(MakeShared<TestStream>(TwoPixels(0x28).Build()));
    decoder.GetInfo(0);
    const auto first = decoder.GetProperties();
    decoder.GetInfo(0);
    EXPECT_NE(decoder.GetProperties(), first);
    EXPECT_EQ(decoder.GetProperties()->GetEntries().size(), 2u);
}
