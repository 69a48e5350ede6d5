#include "codecs/jpg/Frame.h"

#include "foundation/Exception.h"
#include "foundation/platform/Memory.h"

#include <algorithm>
#include <limits>
#include <string>

namespace ET::Img::Jpg {

namespace {

std::uint32_t RoundedUp(std::uint32_t value, std::uint32_t multiple) {
    return DividedUp(value, multiple) * multiple;
}

void ReadComponents(Quorvex::StreamBuffer& buffer, Frame& frame) {
    for (std::uint32_t i = 0; i < frame.componentCount; ++i) {
        const std::uint8_t identifier = buffer.ReadByte();
        const std::uint8_t factors = buffer.ReadByte();
        frame.identifiers[i] = identifier;
        Component& component = frame.Of(identifier);
        component.horizontal = factors >> 4;
        component.vertical = factors & 0xF;
        component.quantisation = buffer.ReadByte() & 3;
        // ITU T.81 table B.2.
        if (component.horizontal == 0 || component.horizontal > 4 || component.vertical == 0 || component.vertical > 4)
            throw Quorvex::Exception();
        frame.largestHorizontal = std::max(frame.largestHorizontal, component.horizontal);
        frame.largestVertical = std::max(frame.largestVertical, component.vertical);
    }
}

} // namespace

const std::array<std::uint8_t, blockSize> naturalOrder{0,  1,  8,  16, 9,  2,  3,  10, 17, 24, 32, 25, 18, 11, 4,  5,
                                                       12, 19, 26, 33, 40, 48, 41, 34, 27, 20, 13, 6,  7,  14, 21, 28,
                                                       35, 42, 49, 56, 57, 50, 43, 36, 29, 22, 15, 23, 30, 37, 44, 51,
                                                       58, 59, 52, 45, 38, 31, 39, 46, 53, 60, 61, 54, 47, 55, 62, 63};

void CoefficientBlocks::Allocate(std::uint64_t blockCount) {
    constexpr std::uint64_t alignment = 16;
    const std::uint64_t bytes = blockCount * (blockSize * sizeof(std::int16_t)) + alignment - 1;
    if (bytes > std::numeric_limits<std::size_t>::max() / 2)
        throw std::bad_alloc();
    m_memory.reset(std::calloc(static_cast<std::size_t>(bytes), 1));
    if (m_memory == nullptr)
        throw std::bad_alloc();
    Quorvex::Platform::ExpectToFill(m_memory.get(), static_cast<std::size_t>(bytes));
    const auto address = reinterpret_cast<std::uintptr_t>(m_memory.get());
    m_first = reinterpret_cast<std::int16_t*>((address + alignment - 1) / alignment * alignment);
}

Quorvex::String FactorText(std::uint32_t component, const char* allowed) {
    return Quorvex::String("component ") + Quorvex::String(std::to_string(component).c_str()) +
           " sampling factors must be " + allowed;
}

void RequireFactorsOfOne(const Frame& frame, std::uint32_t first, std::uint32_t last) {
    for (std::uint32_t i = first; i <= last; ++i)
        if (frame.At(i - 1).BlocksPerMcu() != 1)
            throw Quorvex::Exception(FactorText(i, "1"));
}

ImageInfo Frame::GetImageInfo() const {
    ImageInfo info;
    info.Width = width;
    info.Height = height;
    const bool isWide = precision > 8;
    info.BitsPerPixel = isWide ? 16 : 8;
    info.ColorType = isWide ? Quorvex::Data::ColorTypeEnum::BGRAUInt16 : Quorvex::Data::ColorTypeEnum::BGRAUInt8;
    info.AllocatedWidth = allocatedWidth;
    info.AllocatedHeight = allocatedHeight;
    return info;
}

std::uint32_t ReadWord(Quorvex::StreamBuffer& buffer) {
    const std::uint8_t* const bytes = buffer.Take(2);
    return static_cast<std::uint32_t>(bytes[0] << 8 | bytes[1]);
}

std::uint32_t ReadSegmentEnd(Quorvex::StreamBuffer& buffer) {
    const std::uint32_t start = buffer.GetPosition();
    const std::uint32_t length = ReadWord(buffer);
    if (length < 2 || length > buffer.GetSize() - start)
        throw Quorvex::Exception();
    return start + length;
}

Frame ReadFrame(Quorvex::StreamBuffer& buffer, FrameKind kind) {
    const std::uint32_t end = ReadSegmentEnd(buffer);
    Frame frame;
    frame.kind = kind;
    frame.components = std::make_unique<std::array<Component, 256>>();
    frame.precision = buffer.ReadByte();
    if (frame.precision > 16)
        throw Quorvex::Exception("sample precision > 16");
    frame.height = ReadWord(buffer);
    if (frame.height == 0)
        throw Quorvex::Exception("number of lines == 0");
    frame.width = ReadWord(buffer);
    frame.componentCount = buffer.ReadByte();
    if (frame.componentCount == 0 || frame.componentCount > frame.identifiers.size())
        throw Quorvex::Exception("invalid number of image components");
    if (frame.width == 0)
        throw Quorvex::Exception();
    ReadComponents(buffer, frame);
    buffer.Seek(end);
    frame.allocatedWidth = RoundedUp(frame.width, 8 * frame.largestHorizontal);
    frame.allocatedHeight = RoundedUp(frame.height, 8 * frame.largestVertical);
    // The blocks of a component by itself follow each other row by row, whatever its factors are (ITU T.81 A.2.2).
    if (frame.componentCount == 1)
        frame.At(0).horizontal = frame.At(0).vertical = frame.largestHorizontal = frame.largestVertical = 1;
    const bool isLossless = kind == FrameKind::Lossless;
    frame.mcuColumns = isLossless ? frame.width : DividedUp(frame.width, 8 * frame.largestHorizontal);
    frame.mcuRows = isLossless ? frame.height : DividedUp(frame.height, 8 * frame.largestVertical);
    return frame;
}

void ReadQuantisationTables(Quorvex::StreamBuffer& buffer, Tables& tables) {
    const std::uint32_t end = ReadSegmentEnd(buffer);
    while (buffer.GetPosition() < end) {
        const std::uint8_t head = buffer.ReadByte();
        const unsigned precision = head >> 4;
        if (precision == 1)
            buffer.Take(2 * blockSize);
        if (precision != 0)
            throw Quorvex::Exception("JPGDecoder", 550);
        const std::uint8_t* const values = buffer.Take(blockSize);
        std::copy_n(values, blockSize, tables.quantisation[head & 3].begin());
    }
    buffer.Seek(end);
}

void ReadHuffmanTables(Quorvex::StreamBuffer& buffer, Tables& tables) {
    const std::uint32_t end = ReadSegmentEnd(buffer);
    while (buffer.GetPosition() < end) {
        const std::uint8_t head = buffer.ReadByte();
        if (head >> 4 > 1)
            throw Quorvex::Exception("JPGDecoder", 617);
        const std::uint8_t* const counts = buffer.Take(HuffmanTable::lengthCount);
        std::uint32_t total = 0;
        for (std::size_t i = 0; i < HuffmanTable::lengthCount; ++i)
            total += counts[i];
        if (total > HuffmanTable::largestSymbolCount)
            throw Quorvex::Exception("JPGDecoder", 578);
        const std::uint8_t* const symbols = buffer.Take(total);
        const bool isAc = head >> 4 != 0;
        (isAc ? tables.ac : tables.dc)[head & 3].Load(counts, symbols);
        if (isAc)
            tables.coefficients[head & 3].Load(counts, symbols);
    }
    buffer.Seek(end);
}

} // namespace ET::Img::Jpg
