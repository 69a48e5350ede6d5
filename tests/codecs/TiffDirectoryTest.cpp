#include "codecs/tif/TiffDirectory.h"

#include "tests/codecs/JpgLoad.h"
#include "tests/codecs/JpgSegments.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace ET::Img::Tif {

namespace {

using Bytes = std::vector<std::uint8_t>;

struct Entry {
    std::uint16_t tag;
    std::uint16_t type;
    std::uint32_t count;
    std::uint32_t value;
};

/// The head of a TIFF file and one directory.
Bytes File(ByteOrder order, const std::vector<Entry>& entries, std::uint16_t version = 42) {
    Bytes file;
    const auto put = [&](std::uint32_t number, unsigned byteCount) {
        for (unsigned i = 0; i < byteCount; ++i)
            file.push_back(static_cast<std::uint8_t>(number >> 8 * (order == ByteOrder::Big ? byteCount - 1 - i : i)));
    };
    file.assign(2, order == ByteOrder::Big ? 'M' : 'I');
    put(version, 2);
    put(8, 4);
    put(static_cast<std::uint32_t>(entries.size()), 2);
    for (const Entry& entry : entries) {
        put(entry.tag, 2);
        put(entry.type, 2);
        put(entry.count, 4);
        // A number of 16 bits lies in the first two bytes of the four.
        put(entry.value, entry.type == 3 ? 2 : 4);
        if (entry.type == 3)
            put(0, 2);
    }
    put(0, 4);
    return file;
}

std::uint16_t OrientationOf(const Bytes& file) {
    Quorvex::MemoryStream stream(file.data(), static_cast<std::uint32_t>(file.size()));
    return ReadOrientation(stream);
}

std::string FailureOf(const Bytes& file) {
    try {
        OrientationOf(file);
    } catch (const Quorvex::Exception& failure) {
        return failure.what();
    }
    return "no exception";
}

TEST(TiffDirectory, TheOrientationIsFoundInBothByteOrders) {
    for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big})
        for (std::uint32_t orientation = 1; orientation <= 8; ++orientation) {
            EXPECT_EQ(OrientationOf(File(order, {{271, 2, 4, 0}, {274, 3, 1, orientation}, {282, 5, 1, 8}})),
                      orientation);
            EXPECT_EQ(OrientationOf(File(order, {{274, 4, 1, orientation}})), orientation) << "of 32 bits";
        }
}

TEST(TiffDirectory, NoOrientationAndAWrongOneAreTheFirst) {
    EXPECT_EQ(OrientationOf(File(ByteOrder::Little, {})), 1);
    EXPECT_EQ(OrientationOf(File(ByteOrder::Little, {{271, 3, 1, 6}})), 1);
    for (const std::uint32_t wrong : {0u, 9u, 65535u})
        EXPECT_EQ(OrientationOf(File(ByteOrder::Big, {{274, 3, 1, wrong}})), 1);
    EXPECT_EQ(OrientationOf(File(ByteOrder::Big, {{274, 3, 2, 6}})), 1) << "a list";
    EXPECT_EQ(OrientationOf(File(ByteOrder::Big, {{274, 2, 1, 6}})), 1) << "a text";
}

TEST(TiffDirectory, AHeadThatIsNoneRaises) {
    Bytes file = File(ByteOrder::Little, {});
    file[1] = 'M';
    EXPECT_EQ(FailureOf(file), "invalid byte order");
    EXPECT_EQ(FailureOf(File(ByteOrder::Big, {}, 43)), "unknown tiff version");
}

TEST(TiffDirectory, ACutFileRaises) {
    const Bytes file = File(ByteOrder::Little, {{271, 3, 1, 6}, {274, 3, 1, 6}});
    for (std::size_t size = 0; size + 6 < file.size(); ++size)
        EXPECT_EQ(FailureOf(Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size))), "") << size;
}

TEST(TiffDirectory, AnOffsetBeyondTheFileRaises) {
    Bytes file = File(ByteOrder::Little, {});
    file[7] = 0xFF;
    EXPECT_EQ(FailureOf(file), "");
}

TEST(TiffDirectory, TheOffsetZeroStandsForNoDirectory) {
    // What would be a directory with an orientation, if the head were one.
    Bytes file = File(ByteOrder::Little, {});
    std::fill(file.begin() + 4, file.begin() + 8, std::uint8_t{0});
    file.resize(200);
    const Bytes entry{0x12, 0x01, 3, 0, 1, 0, 0, 0, 6, 0};
    std::copy(entry.begin(), entry.end(), file.begin() + 2 + 12);
    EXPECT_EQ(OrientationOf(file), 1);
}

/// The orientation that a JPEG file with the segment has.
std::uint32_t OrientationWith(const Bytes& segment) {
    using namespace JpgSegments;
    Bytes file = GreyFileUpToItsData(8, 8) + Bytes{0x00} + end;
    file.insert(file.begin() + 2, segment.begin(), segment.end());
    const JpgLoad load(file);
    EXPECT_FALSE(load.decoder.IsIncomplete());
    return load.decoder.GetOrientation();
}

TEST(TiffDirectory, AnExifBlockOpensThroughTheSameReader) {
    using namespace JpgSegments;
    const Bytes name{'E', 'x', 'i', 'f', 0, 0};
    for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big})
        EXPECT_EQ(OrientationWith(Segment(0xE1, name + File(order, {{274, 3, 1, 6}}))), 6u);
    EXPECT_EQ(OrientationWith({}), 1u);
    EXPECT_EQ(OrientationWith(Segment(0xE1, Bytes{'h', 't', 't', 'p', ':', '/', '/'})), 1u)
        << "another use of the marker";
}

TEST(TiffDirectory, AnExifBlockEndsWithItsSegment) {
    using namespace JpgSegments;
    const Bytes name{'E', 'x', 'i', 'f', 0, 0}, tiff = File(ByteOrder::Big, {{274, 3, 1, 6}});
    // The directory lies behind the segment, in a comment.
    const Bytes cut(tiff.begin(), tiff.begin() + 9), rest(tiff.begin() + 9, tiff.end());
    EXPECT_EQ(OrientationWith(Segment(0xE1, name + cut) + Segment(0xFE, rest)), 1u);
    EXPECT_EQ(OrientationWith(Segment(0xE1, name + tiff) + Segment(0xE1, Bytes{'h', 't', 't', 'p', ':', '/', '/'})), 6u)
        << "another use of the marker changes nothing";
}

TEST(TiffDirectory, AnExifBlockThatCannotBeReadIsNoFailureOfThePicture) {
    using namespace JpgSegments;
    const Bytes name{'E', 'x', 'i', 'f', 0, 0};
    EXPECT_EQ(OrientationWith(Segment(0xE1, name)), 1u);
    EXPECT_EQ(OrientationWith(Segment(0xE1, name + Bytes{'I', 'I'})), 1u);
    EXPECT_EQ(OrientationWith(Segment(0xE1, name + File(ByteOrder::Big, {{274, 3, 1, 6}}, 7))), 1u);
}

} // namespace

} // namespace ET::Img::Tif
