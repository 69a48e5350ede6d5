#include "codecs/CodecFactory.h"
#include "codecs/bmp/BMPDecoder.h"
#include "codecs/gif/GIFDecoder.h"
#include "codecs/ico/ICODecoder.h"
#include "codecs/jpg/JPGDecoder.h"
#include "codecs/png/PNGDecoder.h"
#include "codecs/tif/TIFDecoder.h"
#include "foundation/Locale.h"

#include <gtest/gtest.h>

using namespace Quorvex;
using namespace ET::Img;

TEST(Pattern, ComparesTheLoweredTailOfTheName) {
    const String bmp(u"*.bmp");
    EXPECT_TRUE(MatchesPattern(bmp, "a.bmp"));
    EXPECT_TRUE(MatchesPattern(bmp, "A.BMP"));
    EXPECT_TRUE(MatchesPattern(bmp, "a.tar.b.Bmp"));
    EXPECT_TRUE(MatchesPattern(bmp, ".bmp"));
    EXPECT_FALSE(MatchesPattern(bmp, "a.bmp2"));
    EXPECT_FALSE(MatchesPattern(bmp, "abmp"));
    EXPECT_FALSE(MatchesPattern(bmp, "a.bmp "));
}

TEST(Pattern, NameShorterThanTheItemDoesNotMatch) {
    EXPECT_FALSE(MatchesPattern(u"*.bmp", "bmp"));
    EXPECT_FALSE(MatchesPattern(u"*.bmp", ""));
}

TEST(Pattern, AnyItemMayMatch) {
    const String pattern(u"*.tif;*.tiff;*.x");
    EXPECT_TRUE(MatchesPattern(pattern, "a.tif"));
    EXPECT_TRUE(MatchesPattern(pattern, "a.tiff"));
    EXPECT_TRUE(MatchesPattern(pattern, "a.x"));
    EXPECT_FALSE(MatchesPattern(pattern, "a.y"));
}

TEST(Pattern, EmptyRestMatchesEveryName) {
    EXPECT_TRUE(MatchesPattern(u"*", "anything"));
    EXPECT_TRUE(MatchesPattern(u"*", ""));
    EXPECT_TRUE(MatchesPattern(u"*.bmp;*", "a.xyz"));
}

TEST(Pattern, PatternStaysAsItStands) {
    EXPECT_FALSE(MatchesPattern(u"*.BMP", "a.BMP"));
}

TEST(Pattern, WithoutItemsNothingMatches) {
    EXPECT_FALSE(MatchesPattern(u"", "a.bmp"));
    EXPECT_FALSE(MatchesPattern(u";;", "a.bmp"));
}

TEST(Pattern, TakesNamesBeyondOneByte) {
    EXPECT_TRUE(MatchesPattern(u"*.bmp", u"\u4E2D\u6587.Bmp"));
    EXPECT_TRUE(MatchesPattern(u"*.bmp", "\xE4.bmp"));
}

TEST(CodecRegistry, HoldsTheFactoriesInTheOrderOfTheirPriority) {
    const CodecRegistry& registry = GetCodecRegistry();
    ASSERT_GE(registry.size(), 6u);
    EXPECT_EQ(&registry, &GetCodecRegistry());
    EXPECT_TRUE(registry[0].DynamicCast<BMPDecoderFactory>());
    EXPECT_TRUE(registry[1].DynamicCast<GIFDecoderFactory>());
    EXPECT_TRUE(registry[2].DynamicCast<ICODecoderFactory>());
    EXPECT_TRUE(registry[3].DynamicCast<JPGDecoderFactory>());
    EXPECT_TRUE(registry[4].DynamicCast<PNGDecoderFactory>());
    EXPECT_TRUE(registry[5].DynamicCast<TIFDecoderFactory>());
}

void ExpectTexts(const CodecFactory& factory, const char16_t* pattern, const char16_t* german,
                 const char16_t* english) {
    EXPECT_EQ(factory.GetFilePattern(), String(pattern));
    SetLanguage(Locale::EnumLanguage::German);
    EXPECT_EQ(factory.GetFileTypeText(), String(german));
    SetLanguage(Locale::EnumLanguage::English);
    EXPECT_EQ(factory.GetFileTypeText(), String(english));
    SetLanguage(Locale::EnumLanguage::Automatic);
}

TEST(CodecRegistry, FactoriesHaveTheirPatternsAndTexts) {
    ExpectTexts(BMPDecoderFactory(), u"*.bmp;*.dib;*.rl4;*.rl8;*.rle;*.vga",
                u"BMP-Dateien (*.bmp;*.dib;*.rl4;*.rl8;*.rle;*.vga)",
                u"BMP files (*.bmp;*.dib;*.rl4;*.rl8;*.rle;*.vga)");
    ExpectTexts(GIFDecoderFactory(), u"*.gif", u"GIF-Dateien (*.gif)", u"GIF files (*.gif)");
    ExpectTexts(ICODecoderFactory(), u"*.ico;*.cur", u"ICO-Dateien (*.ico;*.cur)", u"ICO files (*.ico;*.cur)");
    ExpectTexts(JPGDecoderFactory(), u"*.jpg;*.jff;*.jfi;*.jfif;*.jif;*.jpe;*.jpeg;*.jps;*.thm",
                u"JPG-Dateien (*.jpg;*.jff;*.jfi;*.jfif;*.jif;*.jpe;*.jpeg;*.jps;*.thm)",
                u"JPG files (*.jpg;*.jff;*.jfi;*.jfif;*.jif;*.jpe;*.jpeg;*.jps;*.thm)");
    ExpectTexts(PNGDecoderFactory(), u"*.png", u"PNG-Dateien (*.png)", u"PNG files (*.png)");
    ExpectTexts(TIFDecoderFactory(), u"*.tif;*.tiff", u"TIF-Dateien (*.tif;*.tiff)", u"TIF files (*.tif;*.tiff)");
}

TEST(BMPDecoderFactory, MatchesAllItsExtensions) {
    const String pattern = BMPDecoderFactory().GetFilePattern();
    for (const char* name : {"a.bmp", "a.dib", "a.rl4", "a.rl8", "a.rle", "a.vga", "A.VGA"})
        EXPECT_TRUE(MatchesPattern(pattern, name)) << name;
}
