#include "codecs/DecodeWithFactory.h"
#include "codecs/bmp/BMPDecoder.h"
#include "data/FileStream.h"
#include "tests/codecs/BmpRecipe.h"
#include "tests/codecs/TestContext.h"
#include "tests/codecs/TestStream.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>

using namespace Quorvex;
using Pixel = Data::ColorBGRA<std::uint8_t>;

// Images of several blocks of rows, from all kinds of streams, against a decoder that takes the file apart pixel by
// pixel.

namespace {

// From 8 bits on more than a decoder reads at once; no width of a row in bytes is a multiple of four but at 32 bits.
constexpr std::uint32_t width = 613, height = 431;

struct Format {
    std::uint32_t bits;
    std::uint32_t compression;
    RecipeMasks masks;
};

constexpr Format formats[] = {
    {1, 0, {}},
    {2, 0, {}},
    {4, 0, {}},
    {8, 0, {}},
    {16, 0, {}},
    {16, 3, {0xF800, 0x07E0, 0x001F, 0}},
    {16, 6, {0xF000, 0x0F00, 0x00F0, 0x000F}},
    {24, 0, {}},
    {32, 0, {}},
    {32, 3, {0x000000FF, 0x0000FF00, 0x00FF0000, 0}},
    {32, 6, {0x3FF00000, 0x000FFC00, 0x000003FF, 0xC0000000}},
    {32, 6, {0x00FF0000, 0x0000FF00, 0x000000FF, 0xFF000000}},
};

BmpRecipe RandomImage(const Format& format, bool isTopDown) {
    constexpr auto rows = static_cast<std::int32_t>(height);
    BmpRecipe recipe{.width = width, .height = isTopDown ? -rows : rows};
    recipe.bits = format.bits;
    recipe.compression = format.compression;
    recipe.masks = format.masks;
    std::mt19937 random(format.bits + format.compression);
    if (format.bits <= 8)
        for (std::uint32_t i = 0; i < 1u << format.bits; ++i)
            recipe.palette.push_back(random());
    for (std::uint32_t y = 0; y < height; ++y) {
        Bytes row((width * format.bits + 7) / 8);
        for (std::uint8_t& byte : row)
            byte = static_cast<std::uint8_t>(random());
        recipe.rows.push_back(std::move(row));
    }
    return recipe;
}

// Value times 255 over the largest value of the field named by SCALED, to nearest.
std::uint8_t Channel(std::uint32_t word, std::uint32_t mask, std::uint32_t scaled) {
    if (mask == 0)
        return 0;
    const std::uint32_t largest = scaled >> std::countr_zero(scaled);
    const double value = (word & mask) >> std::countr_zero(mask);
    return static_cast<std::uint8_t>(static_cast<std::uint32_t>(std::floor(value * 255.0 / largest + 0.5)));
}

std::uint32_t BitsAt(const Bytes& row, std::uint32_t bits, std::uint32_t x) {
    if (bits > 8) {
        std::uint32_t word = 0;
        for (std::uint32_t i = 0; i < bits / 8; ++i)
            word |= std::uint32_t{row[x * (bits / 8) + i]} << 8 * i;
        return word;
    }
    std::uint32_t value = 0;
    for (std::uint32_t i = 0; i < bits; ++i) {
        const std::uint32_t bit = x * bits + i;
        value = value << 1 | (row[bit / 8] >> (7 - bit % 8) & 1);
    }
    return value;
}

Pixel PixelOf(const BmpRecipe& recipe, const Bytes& row, std::uint32_t x) {
    const std::uint32_t word = BitsAt(row, recipe.bits, x);
    if (recipe.bits <= 8) {
        const std::uint32_t color = recipe.palette[word];
        return {static_cast<std::uint8_t>(color), static_cast<std::uint8_t>(color >> 8),
                static_cast<std::uint8_t>(color >> 16), static_cast<std::uint8_t>(color >> 24)};
    }
    if (recipe.bits == 24)
        return {row[3 * x], row[3 * x + 1], row[3 * x + 2], 255};
    RecipeMasks masks = recipe.masks;
    if (recipe.compression == 0)
        masks = recipe.bits == 16 ? RecipeMasks{0x7C00, 0x03E0, 0x001F, 0}
                                  : RecipeMasks{0xFF0000, 0xFF00, 0xFF, 0xFF000000};
    return {Channel(word, masks.blue, masks.blue), Channel(word, masks.green, masks.green),
            Channel(word, masks.red, masks.red), Channel(word, masks.alpha, masks.red)};
}

/// The rows of the image from the top, of which the file holds the first WHOLEROWS in its own order.
std::vector<Pixel> Expected(const BmpRecipe& recipe, std::uint32_t wholeRows) {
    std::vector<Pixel> pixels(std::size_t{width} * height, Pixel{});
    for (std::uint32_t i = 0; i < wholeRows; ++i) {
        Pixel* const row = pixels.data() + std::size_t{recipe.height < 0 ? i : height - 1 - i} * width;
        for (std::uint32_t x = 0; x < width; ++x)
            row[x] = PixelOf(recipe, recipe.rows[i], x);
    }
    return pixels;
}

/// "" where the stream decodes to the pixels, else the first difference.
std::string Difference(const SharedPtr<Stream>& stream, const std::vector<Pixel>& expected, bool isIncomplete) {
    ET::Img::LoadTarget target;
    target.context = MakeShared<TestContext>();
    SharedPtr<Data::ImageBase> image;
    std::int32_t index = 1;
    const auto decoder = ET::Img::DecodeWithFactory(ET::Img::BMPDecoderFactory(), stream, target, index, image);
    if (decoder->IsIncomplete() != isIncomplete)
        return isIncomplete ? "complete" : "incomplete";
    const auto lock = image->LockBGRAUInt8(Data::LockMode::ReadOnly);
    for (std::uint32_t y = 0; y < height; ++y)
        for (std::uint32_t x = 0; x < width; ++x)
            if (lock.Row(y)[x] != expected[std::size_t{y} * width + x])
                return "pixel (" + std::to_string(x) + ", " + std::to_string(y) + ")";
    return "";
}

void ExpectAllStreamsAgree(const BmpRecipe& recipe, const Bytes& file, std::uint32_t wholeRows) {
    const std::vector<Pixel> expected = Expected(recipe, wholeRows);
    const bool isIncomplete = wholeRows < height;
    const std::string what = std::to_string(recipe.bits) + " bits, compression " + std::to_string(recipe.compression) +
                             ", height " + std::to_string(recipe.height) + ", " + std::to_string(wholeRows) + " rows";
    for (const auto manner : {TestStream::Manner::File, TestStream::Manner::Memory})
        EXPECT_EQ(Difference(MakeShared<TestStream>(file, manner), expected, isIncomplete), "") << what;
    const Quorvex::Test::TemporaryFolder folder;
    folder.Write("a.bmp", std::string(file.begin(), file.end()));
    EXPECT_EQ(Difference(MakeShared<FileStream>(folder.PathOf("a.bmp")), expected, isIncomplete), "") << what;
}

} // namespace

TEST(BmpLargeImage, EqualsThePlainDecoderInEveryFormatOrderAndStream) {
    for (const Format& format : formats)
        for (const bool isTopDown : {false, true}) {
            const BmpRecipe recipe = RandomImage(format, isTopDown);
            ExpectAllStreamsAgree(recipe, recipe.Build(), height);
        }
}

TEST(BmpLargeImage, CutInAnyBlockKeepsTheWholeRowsBeforeTheCut) {
    for (const std::size_t format : {0, 3, 5, 7, 8}) {
        for (const bool isTopDown : {false, true}) {
            const BmpRecipe recipe = RandomImage(formats[format], isTopDown);
            const Bytes file = recipe.Build();
            const std::size_t rowBytes = (file.size() - recipe.PixelOffset()) / height;
            for (const std::uint32_t rows : {0u, 100u, 217u, height - 1}) {
                for (const std::size_t more : {std::size_t{0}, rowBytes - 1}) {
                    const auto length = static_cast<std::ptrdiff_t>(recipe.PixelOffset() + rows * rowBytes + more);
                    ExpectAllStreamsAgree(recipe, Bytes(file.begin(), file.begin() + length), rows);
                }
            }
        }
    }
}
