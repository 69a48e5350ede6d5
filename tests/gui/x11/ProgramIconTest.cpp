#include "gui/window/x11/ProgramIcon.h"

#include <gtest/gtest.h>

namespace Quorvex::GUI {
namespace {

using Numbers = std::vector<unsigned long>;

void Put(std::vector<std::uint8_t>& bytes, std::uint32_t value, int count) {
    for (int i = 0; i < count; ++i)
        bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

/// An icon file with one bitmap whose pixels, from the bottom row up, are 0xAARRGGBB = 1, 2, 3...
std::vector<std::uint8_t> IconFile(std::uint32_t width, std::uint32_t height, std::uint32_t bitsPerPixel = 32) {
    std::vector<std::uint8_t> bytes;
    Put(bytes, 0, 2);
    Put(bytes, 1, 2);
    Put(bytes, 1, 2); // pictures
    Put(bytes, width, 1);
    Put(bytes, height, 1);
    Put(bytes, 0, 2);
    Put(bytes, 1, 2);
    Put(bytes, bitsPerPixel, 2);
    Put(bytes, 0, 4);
    Put(bytes, 22, 4); // where the bitmap begins
    Put(bytes, 40, 4);
    Put(bytes, width, 4);
    Put(bytes, height * 2, 4); // of picture and mask
    Put(bytes, 1, 2);
    Put(bytes, bitsPerPixel, 2);
    for (int i = 0; i < 6; ++i)
        Put(bytes, 0, 4);
    for (std::uint32_t i = 1; i <= width * height; ++i)
        Put(bytes, 0xA0B0C000 + i, 4);
    return bytes;
}

TEST(ProgramIcon, ABitmapComesWithItsTopRowFirst) {
    EXPECT_EQ(IconAsProperty(IconFile(2, 3), 48),
              (Numbers{2, 3, 0xA0B0C005, 0xA0B0C006, 0xA0B0C003, 0xA0B0C004, 0xA0B0C001, 0xA0B0C002}));
}

TEST(ProgramIcon, PicturesOfOtherKindsAndLargerOnesAreLeftOut) {
    EXPECT_TRUE(IconAsProperty(IconFile(2, 3, 8), 48).empty());
    EXPECT_TRUE(IconAsProperty(IconFile(4, 2), 3).empty());
    EXPECT_TRUE(IconAsProperty(IconFile(2, 4), 3).empty());
    EXPECT_TRUE(IconAsProperty(IconFile(0, 4), 48).empty());
}

TEST(ProgramIcon, AFileThatEndsEarlyHoldsNothing) {
    const auto whole = IconFile(2, 3);
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_TRUE(IconAsProperty(std::span(whole).first(size), 48).empty()) << size;
}

TEST(ProgramIcon, TheProgramsOwnHasTheUsualSides) {
    const Numbers icon = GetProgramIcon();
    std::vector<unsigned long> sides;
    std::size_t position = 0;
    while (position < icon.size()) {
        const unsigned long side = icon[position];
        sides.push_back(side);
        ASSERT_EQ(icon[position + 1], side);
        ASSERT_LE(position + 2 + side * side, icon.size());
        const auto pixel = [&](unsigned long x, unsigned long y) { return icon[position + 2 + y * side + x]; };
        EXPECT_LT(pixel(0, 0) >> 24, 0xFFu) << "its corners are round";
        EXPECT_EQ(pixel(side / 2, 1), 0xFF262C38) << "the frame";
        EXPECT_EQ(pixel(side / 2, side / 2) >> 24, 0xFFu);
        // The picture within begins with yellow at the top left and ends with blue at the bottom right.
        EXPECT_GT((pixel(side / 4, side / 4) >> 16) & 0xFF, 0xC0u);
        EXPECT_GT(pixel(side * 3 / 4 - 1, side * 3 / 4 - 1) & 0xFF, 0x70u);
        position += 2 + side * side;
    }
    EXPECT_EQ(sides, (std::vector<unsigned long>{16, 24, 32, 48}));
}

} // namespace
} // namespace Quorvex::GUI
