#include "codecs/jpg/BitReader.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace ET::Img::Jpg {

namespace {

using Bytes = std::vector<std::uint8_t>;

std::uint32_t FillAndGet(BitReader& reader, unsigned count) {
    reader.Fill();
    return reader.Get(count);
}

/// Reads all of the data bits and gives them as a text of digits.
std::string Digits(const Bytes& bytes, std::size_t bitCount) {
    BitReader reader(bytes.data(), bytes.data() + bytes.size());
    std::string digits;
    for (std::size_t i = 0; i < bitCount; ++i)
        digits += reader.GetBit() != 0 ? '1' : '0';
    return digits;
}

TEST(JpgBitReader, TheHighestBitComesFirst) {
    EXPECT_EQ(Digits({0xA5, 0x01}, 16), "1010010100000001");
}

TEST(JpgBitReader, FFAndZeroAreOneByte) {
    EXPECT_EQ(Digits({0xFF, 0x00, 0x00, 0x81}, 24), "111111110000000010000001");
}

TEST(JpgBitReader, AMarkerEndsTheSegmentAndZerosFollow) {
    const Bytes bytes{0xC3, 0xFF, 0xD9, 0xFF, 0xFF};
    BitReader reader(bytes.data(), bytes.data() + bytes.size());
    EXPECT_EQ(FillAndGet(reader, 8), 0xC3u);
    EXPECT_EQ(reader.Position(), bytes.data() + 1);
    EXPECT_EQ(FillAndGet(reader, 7), 0u);
    EXPECT_FALSE(reader.IsOverrun()) << "the rest of a last byte may be missing";
    EXPECT_EQ(FillAndGet(reader, 1), 0u);
    EXPECT_TRUE(reader.IsOverrun());
    EXPECT_EQ(reader.Position(), bytes.data() + 1) << "the marker stays where it is";
}

TEST(JpgBitReader, TheEndOfMemoryIsLikeAMarker) {
    for (const Bytes& bytes : {Bytes{0x12}, Bytes{0x12, 0xFF}}) {
        BitReader reader(bytes.data(), bytes.data() + bytes.size());
        EXPECT_EQ(FillAndGet(reader, 32), 0x12000000u);
        EXPECT_TRUE(reader.IsOverrun());
        EXPECT_EQ(reader.Position(), bytes.data() + 1);
    }
}

TEST(JpgBitReader, TheOverrunIsCountedForAsLongAsAnybodyReads) {
    const Bytes bytes{0x80};
    BitReader reader(bytes.data(), bytes.data() + 1);
    for (int i = 0; i < 100000; ++i)
        FillAndGet(reader, 31);
    EXPECT_TRUE(reader.IsOverrun());
}

/// Bit by bit, out of the definition.
struct PlainReader {
    const Bytes& bytes;
    std::size_t position = 0;
    unsigned bit = 0;

    std::uint32_t Get(unsigned count) {
        std::uint32_t value = 0;
        for (; count != 0; --count) {
            value = value << 1 | (bytes[position] >> (7 - bit) & 1);
            if (++bit == 8) {
                bit = 0;
                position += bytes[position] == 0xFF ? 2 : 1;
            }
        }
        return value;
    }
};

TEST(JpgBitReader, RandomReadsAreThoseOfAPlainReader) {
    std::mt19937 random(81);
    for (int run = 0; run < 300; ++run) {
        Bytes bytes;
        std::size_t dataBytes = 0;
        // From no stuffed bytes to nothing else.
        const unsigned share = static_cast<unsigned>(run % 5);
        for (; dataBytes < 200; ++dataBytes) {
            const auto byte = static_cast<std::uint8_t>(random() % 4 < share ? 0xFF : random() % 3 == 0 ? 0 : random());
            bytes.push_back(byte);
            if (byte == 0xFF)
                bytes.push_back(0);
        }
        bytes.push_back(0xFF);
        bytes.push_back(0xD9);
        BitReader reader(bytes.data(), bytes.data() + bytes.size());
        PlainReader plain{bytes};
        for (std::size_t left = dataBytes * 8; left >= 25;) {
            const unsigned count = random() % 2 == 0 ? 1 : 1 + random() % 25;
            ASSERT_EQ(count == 1 ? reader.GetBit() : FillAndGet(reader, count), plain.Get(count));
            left -= count;
            ASSERT_EQ(reader.Position() - bytes.data(),
                      static_cast<std::ptrdiff_t>(plain.position + (plain.bit == 0                  ? 0
                                                                    : bytes[plain.position] == 0xFF ? 2
                                                                                                    : 1)));
        }
        EXPECT_FALSE(reader.IsOverrun());
    }
}

} // namespace

} // namespace ET::Img::Jpg
