#include "codecs/ico/IconDirectory.h"

#include "data/StreamBuffer.h"
#include "foundation/Exception.h"

namespace ET::Img::Ico {

namespace {

constexpr std::uint32_t headerBytes = 6;
constexpr std::uint32_t entryBytes = 16;

constexpr std::uint16_t iconType = 1;
constexpr std::uint16_t cursorType = 2;

std::uint16_t Word16(const std::uint8_t* bytes) {
    return static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
}

std::uint32_t Word32(const std::uint8_t* bytes) {
    return std::uint32_t{Word16(bytes)} | std::uint32_t{Word16(bytes + 2)} << 16;
}

std::uint16_t ReadCount(Quorvex::Stream& stream) {
    std::uint8_t header[headerBytes];
    stream.read(header, headerBytes);
    const std::uint16_t type = Word16(header + 2);
    if (Word16(header) != 0 || (type != iconType && type != cursorType))
        throw Quorvex::Exception("not an icon or cursor file");
    return Word16(header + 4);
}

} // namespace

std::vector<Entry> ReadDirectory(Quorvex::Stream& stream) {
    const std::uint16_t count = ReadCount(stream);
    if (count == 0)
        throw Quorvex::Exception("empty container!");
    Quorvex::StreamBuffer buffer(stream.lock(count * entryBytes));
    std::vector<Entry> entries(count);
    for (Entry& entry : entries) {
        const std::uint8_t* const bytes = buffer.Take(entryBytes);
        entry = {bytes[0], bytes[1], Word16(bytes + 6), Word32(bytes + 8), Word32(bytes + 12)};
    }
    return entries;
}

} // namespace ET::Img::Ico
