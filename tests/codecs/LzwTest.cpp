#include "codecs/lzw/GifLzw.h"
#include "codecs/lzw/Strings.h"
#include "codecs/lzw/TiffLzw.h"
#include "tests/codecs/LibtiffStrip.h"
#include "tests/codecs/LzwReference.h"
#include "tests/codecs/LzwWriter.h"
#include "tests/support/RaisedText.h"

#include <gtest/gtest.h>

#include <random>

using namespace ET::Img;
using Quorvex::Test::RaisedText;

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr CodeWriter::Format gif{};
constexpr CodeWriter::Format usualTiff{.isLowBitFirst = false, .earlyChange = 1};
constexpr CodeWriter::Format oldTiff{};

/// Bytes below the limit: noise, runs and repetitions, in turns of random length.
Bytes Data(std::size_t size, std::uint32_t limit, std::uint32_t seed) {
    std::mt19937 random(seed);
    Bytes data;
    while (data.size() < size) {
        const std::size_t length = std::min<std::size_t>(size - data.size(), 1 + random() % 300);
        const std::uint32_t kind = random() % 3;
        const auto value = static_cast<std::uint8_t>(random() % limit);
        const std::size_t distance = 1 + random() % std::min<std::size_t>(data.size() + 1, 40);
        for (std::size_t i = 0; i < length; ++i) {
            if (kind == 0 || (kind == 2 && distance > data.size()))
                data.push_back(static_cast<std::uint8_t>(random() % limit));
            else
                data.push_back(kind == 1 ? value : data[data.size() - distance]);
        }
    }
    return data;
}

Bytes Noise(std::size_t size, std::uint32_t seed) {
    std::mt19937 random(seed);
    Bytes noise(size);
    for (std::uint8_t& byte : noise)
        byte = static_cast<std::uint8_t>(random());
    return noise;
}

/// What comes out, in memory of exactly that size; what is not written stays 0xEE.
template <class Decode>
LzwOutcome Outcome(std::size_t size, const Decode& decode) {
    LzwOutcome outcome{Bytes(size, 0xEE), false};
    const std::string raised = RaisedText([&] { decode(outcome.bytes.data()); });
    outcome.isWhole = raised == "(nothing was raised)";
    EXPECT_TRUE(outcome.isWhole || raised.empty()) << raised;
    return outcome;
}

LzwOutcome DecodeGif(const Bytes& source, std::uint32_t codeSize, std::uint32_t size) {
    return Outcome(
        size, [&](std::uint8_t* target) { DecodeGifLzw(source.data(), source.size(), codeSize, size, target, size); });
}

LzwOutcome DecodeTiff(const Bytes& source, std::size_t size) {
    return Outcome(size, [&](std::uint8_t* target) {
        EXPECT_EQ(DecodeTiffLzw(source.data(), source.size(), target, size), size);
    });
}

/// All bytes, and no failure.
void ExpectWhole(const LzwOutcome& had, const Bytes& wanted, const std::string& what) {
    EXPECT_TRUE(had.isWhole) << what;
    EXPECT_TRUE(had.bytes == wanted) << what;
}

void ExpectSame(const LzwOutcome& had, const LzwOutcome& wanted, const std::string& what) {
    ASSERT_EQ(had.isWhole, wanted.isWhole) << what;
    ASSERT_TRUE(std::equal(wanted.bytes.begin(), wanted.bytes.end(), had.bytes.begin())) << what;
    // Behind them nothing is left of the work.
    for (std::size_t i = wanted.bytes.size(); i < had.bytes.size(); ++i)
        ASSERT_EQ(had.bytes[i], i < wanted.bytes.size() + 32 ? 0 : 0xEE) << what << ", byte " << i;
}

} // namespace

TEST(Lzw, DecodesWhatWasEncodedWithEveryCodeSize) {
    for (std::uint32_t codeSize = 1; codeSize <= 11; ++codeSize) {
        const Bytes data = Data(30000, std::min(1u << codeSize, 256u), codeSize);
        for (const bool clearsFullTable : {true, false}) {
            for (const bool beginsWithClear : {true, false}) {
                const LzwStyle style{.beginsWithClear = beginsWithClear, .clearsFullTable = clearsFullTable};
                ExpectWhole(DecodeGif(WriteLzw(data, codeSize, style), codeSize, 30000), data,
                            "code size " + std::to_string(codeSize));
            }
        }
    }
}

TEST(Lzw, DecodesCodesOfOneByteAlone) {
    // A code size of 0 has codes for one byte, for clearing, and for the end.
    const Bytes data(5000, 0);
    ExpectWhole(DecodeGif(WriteLzw(data, 0), 0, 5000), data, "");
}

TEST(Lzw, DecodesBothFormsOfTiff) {
    for (const CodeWriter::Format& format : {usualTiff, oldTiff}) {
        for (const std::uint32_t codesUntilClear : {0u, 1u, 2u, 254u, 255u, 1000u}) {
            for (const std::size_t size : {0u, 1u, 2u, 31u, 32u, 33u, 255u, 100000u}) {
                const Bytes data = Data(size, 256, 77);
                ExpectWhole(DecodeTiff(WriteLzw(data, 8, {.format = format, .codesUntilClear = codesUntilClear}), size),
                            data, std::to_string(size) + " bytes, " + std::to_string(codesUntilClear));
            }
        }
    }
}

TEST(Lzw, LongRunsAndShortPeriods) {
    for (const std::size_t period : {1u, 2u, 3u, 7u, 8u, 15u, 16u, 17u, 31u, 33u}) {
        Bytes data;
        for (std::size_t i = 0; i < 300000; ++i)
            data.push_back(static_cast<std::uint8_t>(i % period * 3));
        const std::string what = "period " + std::to_string(period);
        ExpectWhole(DecodeTiff(WriteLzw(data, 8, {.format = usualTiff}), data.size()), data, what);
        ExpectWhole(DecodeGif(WriteLzw(data, 8, {.clearsFullTable = false}), 8, 300000), data, what);
    }
}

TEST(Lzw, MoreThanTheOutputIsNotRead) {
    const Bytes data = Data(1000, 256, 5);
    for (std::uint32_t size = 0; size < 1000; ++size) {
        const Bytes wanted(data.begin(), data.begin() + size);
        const std::string what = std::to_string(size) + " bytes";
        ExpectWhole(DecodeGif(WriteLzw(data, 8), 8, size), wanted, what);
        // What lies behind the last code stands for nothing.
        Bytes codes = WriteLzw(wanted, 8, {.hasEnd = false});
        codes.resize(codes.size() + 20, 0xFF);
        ExpectWhole(DecodeGif(codes, 8, size), wanted, what);
    }
}

TEST(Lzw, KeepsTheBeginningOfWhatItCounts) {
    const Bytes data = Data(5000, 256, 6);
    const Bytes codes = WriteLzw(data, 8);
    for (const std::uint32_t kept : {0u, 1u, 100u, 4999u}) {
        const auto decode = [&](std::uint32_t total) {
            return Outcome(
                kept, [&](std::uint8_t* target) { DecodeGifLzw(codes.data(), codes.size(), 8, total, target, kept); });
        };
        const Bytes wanted(data.begin(), data.begin() + kept);
        ExpectWhole(decode(5000), wanted, std::to_string(kept) + " bytes");
        const LzwOutcome tooFew = decode(5001);
        EXPECT_FALSE(tooFew.isWhole);
        EXPECT_TRUE(tooFew.bytes == wanted) << kept;
    }
}

TEST(Lzw, CutAtEveryByteKeepsWhatWasDecoded) {
    const Bytes data = Data(1500, 256, 8);
    for (const CodeWriter::Format& format : {usualTiff, oldTiff}) {
        const Bytes codes = WriteLzw(data, 8, {.format = format, .hasEnd = false});
        for (std::size_t length = 2; length < codes.size(); ++length) {
            const Bytes cut(codes.begin(), codes.begin() + static_cast<std::ptrdiff_t>(length));
            const LzwOutcome wanted = ReferenceLzw(cut, 8, format, data.size());
            ASSERT_FALSE(wanted.isWhole);
            ASSERT_TRUE(std::equal(wanted.bytes.begin(), wanted.bytes.end(), data.begin()));
            ExpectSame(DecodeTiff(cut, data.size()), wanted, "cut at " + std::to_string(length));
        }
    }
    for (const Bytes& tooShort : {Bytes{}, Bytes{0x80}})
        ExpectSame(DecodeTiff(tooShort, 5), {}, "no whole code");
}

TEST(Lzw, NoiseDecodesAsThePlainDecoderSays) {
    for (std::uint32_t seed = 0; seed < 3000; ++seed) {
        const Bytes noise = Noise(seed % 97, seed);
        const std::uint32_t codeSize = seed % 12;
        ExpectSame(DecodeGif(noise, codeSize, 2000), ReferenceLzw(noise, codeSize, gif, 2000),
                   "seed " + std::to_string(seed));
    }
}

TEST(Lzw, DamagedCodesDecodeAsThePlainDecoderSays) {
    const Bytes data = Data(6000, 256, 9);
    for (const CodeWriter::Format& format : {usualTiff, oldTiff}) {
        for (const bool clearsFullTable : {true, false}) {
            const Bytes codes = WriteLzw(data, 8, {.format = format, .clearsFullTable = clearsFullTable});
            std::mt19937 random(10);
            for (std::uint32_t i = 0; i < 200; ++i) {
                Bytes bad = codes;
                bad[2 + random() % (bad.size() - 2)] ^= static_cast<std::uint8_t>(1 + random() % 255);
                ExpectSame(DecodeTiff(bad, data.size()), ReferenceLzw(bad, 8, format, data.size()),
                           "damage " + std::to_string(i));
            }
        }
    }
}

TEST(Lzw, TheFirstCodeAfterClearingIsAByte) {
    for (const std::uint32_t code : {257u, 258u, 259u, 511u}) {
        const Bytes codes = CodeWriter(8, gif).Clear().Code(code).Code(1).GetBytes();
        ExpectSame(DecodeGif(codes, 8, 2), {}, "code " + std::to_string(code));
    }
    const Bytes later = CodeWriter(8, gif).Clear().Code(3).Code(4).Clear().Code(258).GetBytes();
    ExpectSame(DecodeGif(later, 8, 5), {{3, 4}, false}, "a string of before");
    ExpectWhole(DecodeGif(CodeWriter(8, gif).Clear().Clear().Clear().Code(7).GetBytes(), 8, 1), {7}, "");
}

TEST(Lzw, AStringMayBeginWithTheOneBeforeIt) {
    // 258 is entered by the very code that asks for it: the string before, and its own first byte again.
    const Bytes codes = CodeWriter(8, gif).Clear().Code(7).Code(258).Code(259).GetBytes();
    ExpectWhole(DecodeGif(codes, 8, 6), Bytes(6, 7), "");
}

TEST(Lzw, AFullTableStaysAsItIs) {
    // 4095 is the last entry; codes behind it make no other, and do not change it.
    CodeWriter writer(8, gif);
    writer.Clear();
    Bytes expected;
    for (std::uint32_t i = 0; writer.GetNext() < 4095; ++i) {
        writer.Code(i % 256);
        expected.push_back(static_cast<std::uint8_t>(i % 256));
    }
    const std::uint8_t last = expected.back();
    writer.Code(4095);
    expected.insert(expected.end(), {last, last});
    for (std::uint32_t i = 0; i < 20; ++i) {
        writer.Code(i).Code(4095);
        expected.insert(expected.end(), {static_cast<std::uint8_t>(i), last, last});
    }
    ExpectWhole(DecodeGif(writer.GetBytes(), 8, static_cast<std::uint32_t>(expected.size())), expected, "");
}

TEST(Lzw, CodeSizesAboveElevenAreRefused) {
    for (std::uint32_t codeSize = 0; codeSize <= 11; ++codeSize)
        EXPECT_NO_THROW(CheckGifCodeSize(codeSize));
    for (const std::uint32_t codeSize : {12u, 255u})
        EXPECT_EQ(RaisedText([&] { CheckGifCodeSize(codeSize); }), "CodeSize>LZ_BITS");
}

TEST(Lzw, StringsThatNoTableCanLeadToAreRefused) {
    Lzw::Strings strings(256);
    strings.Enter(300, {0, 1000, 4095});
    EXPECT_EQ(strings[300].start, 1000u);
    EXPECT_EQ(strings[300].length, 4095u);
    EXPECT_EQ(RaisedText([&] { strings.Enter(300, {0, 1000, 4096}); }), "_StackPtr>=LZ_MAX_CODE");
}

TEST(TiffLzw, TargetsOfFourGigabytesAreRefused) {
    if constexpr (sizeof(std::size_t) > 4) {
        const Bytes codes(100);
        std::uint8_t byte = 0;
        EXPECT_EQ(RaisedText([&] { DecodeTiffLzw(codes.data(), codes.size(), &byte, std::size_t{1} << 32); }), "");
    }
}

#ifdef VARNOLITE_HAS_TIFF

namespace {

constexpr std::uint16_t lzw = 5;

LibtiffStrip StripOf(std::size_t size) {
    return {.width = static_cast<std::uint32_t>(size), .compression = lzw};
}

} // namespace

TEST(TiffLzw, DecodesWhatLibtiffEncodes) {
    for (const std::size_t size : {1u, 2u, 17u, 1000u, 50000u, 400000u}) {
        const Bytes data = Data(size, 256, static_cast<std::uint32_t>(size));
        ExpectWhole(DecodeTiff(StripOf(size).Encode(data), size), data, std::to_string(size) + " bytes");
    }
}

TEST(TiffLzw, LibtiffReadsBothFormsAlike) {
    for (const CodeWriter::Format& format : {usualTiff, oldTiff}) {
        const Bytes data = Data(60000, 256, 3);
        const Bytes codes = WriteLzw(data, 8, {.format = format});
        const LibtiffStrip::Decoded peer = StripOf(data.size()).Decode(codes);
        EXPECT_TRUE(peer.isWhole);
        EXPECT_TRUE(peer.rows == data);
        ExpectWhole(DecodeTiff(codes, data.size()), data, "");
    }
}

#endif
