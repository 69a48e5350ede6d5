#include "tests/codecs/IcoRecipe.h"

#include "tests/codecs/BmpRecipe.h"

#include <random>

namespace {

constexpr std::uint32_t headerBytes = 6, entryBytes = 16;

} // namespace

IcoRecipe::Bytes IcoRecipe::Build() const {
    ByteWriter out;
    out.U16(reserved).U16(type).U16(count.value_or(static_cast<std::uint16_t>(images.size())));
    auto offset = static_cast<std::uint32_t>(headerBytes + entryBytes * images.size());
    for (const Image& image : images) {
        const auto size = static_cast<std::uint32_t>(image.data.size());
        // The colour count, the reserved byte and the planes hold what nobody looks at.
        out.U8(image.width).U8(image.height).U8(0x77).U8(0x88).U16(0x9999).U16(image.bitCount);
        out.U32(image.size.value_or(size)).U32(image.offset.value_or(offset));
        offset += size;
    }
    for (const Image& image : images)
        out.Append(image.data);
    return out.bytes;
}

std::vector<std::uint8_t> IconBitmap::Build() const {
    std::mt19937 random(seed);
    BmpRecipe recipe{.width = static_cast<std::int32_t>(width)};
    recipe.height = rows.value_or(static_cast<std::int32_t>(2 * height));
    recipe.bits = bits;
    recipe.hasFileHeader = false;
    for (std::uint32_t i = 0; bits <= 8 && i < 1u << bits; ++i)
        recipe.palette.push_back(random() & 0xFFFFFF);
    for (std::uint32_t y = 0; y < height; ++y) {
        ::Bytes row((width * bits + 7) / 8);
        for (std::uint8_t& byte : row)
            byte = static_cast<std::uint8_t>(random());
        for (std::uint32_t x = 0; bits == 32 && x < width; ++x)
            if (const std::uint32_t kind = random() % 3; kind < 2)
                row[4 * x + 3] = static_cast<std::uint8_t>(kind * 255);
        recipe.rows.push_back(std::move(row));
    }
    for (std::uint32_t y = 0; hasMask && y < height; ++y) {
        ::Bytes row((width + 31) / 32 * 4);
        for (std::uint8_t& byte : row)
            byte = static_cast<std::uint8_t>(random());
        recipe.rows.push_back(std::move(row));
    }
    return recipe.Build();
}

IcoRecipe::Image IconBitmap::ToImage() const {
    return {static_cast<std::uint8_t>(width), static_cast<std::uint8_t>(height), static_cast<std::uint16_t>(bits),
            Build()};
}

std::string IconBitmap::Describe() const {
    return std::to_string(width) + " x " + std::to_string(height) + ", " + std::to_string(bits) + " bits" +
           (hasMask ? "" : ", no mask") + (rows ? ", " + std::to_string(*rows) + " rows" : "");
}
