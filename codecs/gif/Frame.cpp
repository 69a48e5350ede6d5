#include "codecs/gif/Frame.h"

#include "foundation/Exception.h"

namespace ET::Img::Gif {

namespace {

constexpr std::uint8_t separator = 0x2C;
constexpr std::uint8_t interlaced = 0x40;

std::uint32_t Number16(const std::uint8_t* bytes) {
    return bytes[0] | static_cast<std::uint32_t>(bytes[1]) << 8;
}

} // namespace

Frame ReadFrame(Quorvex::StreamBuffer& file, const ColorTable& fileColors) {
    constexpr std::uint32_t descriptorBytes = 10;
    const std::uint8_t* const descriptor = file.Take(descriptorBytes);
    if (descriptor[0] != separator)
        throw Quorvex::Exception("118 missing image separator");
    Frame frame;
    frame.width = Number16(descriptor + 5);
    frame.height = Number16(descriptor + 7);
    const std::uint8_t packed = descriptor[9];
    frame.isInterlaced = (packed & interlaced) != 0;
    frame.colors = fileColors;
    if ((packed & ColorTable::isThere) != 0)
        frame.colors.ReadOver(file, packed);
    frame.codeSize = file.ReadByte();
    frame.dataOffset = file.GetPosition();
    frame.dataBytes = SkipSubBlocks(file);
    return frame;
}

std::uint32_t SkipSubBlocks(Quorvex::StreamBuffer& file) {
    std::uint32_t bytes = 0;
    while (const std::uint32_t length = file.ReadByte()) {
        file.Take(length);
        bytes += length;
    }
    return bytes;
}

std::vector<std::uint8_t> ReadCodes(Quorvex::StreamBuffer& file, const Frame& frame) {
    std::vector<std::uint8_t> codes;
    codes.reserve(frame.dataBytes);
    const std::uint32_t behind = file.GetPosition();
    file.Seek(frame.dataOffset);
    while (const std::uint32_t length = file.ReadByte()) {
        const std::uint8_t* const block = file.Take(length);
        codes.insert(codes.end(), block, block + length);
    }
    file.Seek(behind);
    return codes;
}

} // namespace ET::Img::Gif
