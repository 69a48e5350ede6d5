#include "codecs/bmp/ExpandBgr.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <vector>

using ET::Img::ExpandBgr;
namespace Forms = ET::Img::ExpandBgrForms;
using Pixel = Quorvex::Data::ColorBGRA<std::uint8_t>;

namespace {

// A source of exactly the bytes that may be read, at an odd address, and a destination with guards.
void CompareWithPlain(Forms::Form form, std::uint32_t count) {
    std::mt19937 random(count);
    const std::unique_ptr<std::uint8_t[]> source(new std::uint8_t[3 * count + 1]);
    for (std::uint32_t i = 0; i < 3 * count + 1; ++i)
        source[i] = static_cast<std::uint8_t>(random());
    const Pixel guard{9, 9, 9, 9};
    std::vector<Pixel> expected(count + 2, guard);
    std::vector<Pixel> actual(count + 2, guard);
    Forms::Plain(source.get() + 1, expected.data() + 1, count);
    form(source.get() + 1, actual.data() + 1, count);
    EXPECT_EQ(actual, expected) << count;
}

} // namespace

TEST(ExpandBgr, PlainFormGivesAlpha255) {
    const std::uint8_t source[] = {1, 2, 3, 4, 5, 6};
    Pixel pixels[2];
    Forms::Plain(source, pixels, 2);
    EXPECT_EQ(pixels[0], (Pixel{1, 2, 3, 255}));
    EXPECT_EQ(pixels[1], (Pixel{4, 5, 6, 255}));
}

TEST(ExpandBgr, FastFormsEqualThePlainOne) {
    for (const Forms::Form form : {Forms::Ssse3(), Forms::Avx2(), Forms::Form(ExpandBgr)}) {
        if (form == nullptr)
            continue;
        for (std::uint32_t count = 0; count <= 70; ++count)
            CompareWithPlain(form, count);
        CompareWithPlain(form, 1001);
    }
}
