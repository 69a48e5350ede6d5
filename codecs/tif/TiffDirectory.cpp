#include "codecs/tif/TiffDirectory.h"

#include "foundation/Exception.h"

namespace ET::Img::Tif {

namespace {

constexpr std::uint16_t version = 42;
constexpr std::uint16_t orientationTag = 274;
constexpr std::uint16_t shortType = 3;
constexpr std::uint16_t longType = 4;
constexpr std::uint32_t entryBytes = 12;

ByteOrder ReadByteOrder(Quorvex::StreamBuffer& buffer) {
    const std::uint8_t* const mark = buffer.Take(2);
    if (mark[0] == 'I' && mark[1] == 'I')
        return ByteOrder::Little;
    if (mark[0] == 'M' && mark[1] == 'M')
        return ByteOrder::Big;
    throw Quorvex::Exception("invalid byte order");
}

} // namespace

std::uint32_t Numbers::Read(std::uint64_t offset, std::uint32_t byteCount) const {
    if (offset > m_buffer.GetSize())
        throw Quorvex::Exception();
    m_buffer.Seek(static_cast<std::uint32_t>(offset));
    const std::uint8_t* const bytes = m_buffer.Take(byteCount);
    std::uint32_t number = 0;
    for (std::uint32_t i = 0; i < byteCount; ++i)
        number = number << 8 | bytes[m_order == ByteOrder::Big ? i : byteCount - 1 - i];
    return number;
}

std::uint16_t Numbers::Word(std::uint64_t offset) const {
    return static_cast<std::uint16_t>(Read(offset, 2));
}

std::uint32_t Numbers::DoubleWord(std::uint64_t offset) const {
    return Read(offset, 4);
}

std::optional<std::uint32_t> FindNumber(const Numbers& numbers, std::uint32_t directory, std::uint16_t tag) {
    // The offset 0 stands for no directory.
    if (directory == 0)
        return std::nullopt;
    const std::uint32_t count = numbers.Word(directory);
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint64_t entry = std::uint64_t(directory) + 2 + std::uint64_t(i) * entryBytes;
        if (numbers.Word(entry) != tag)
            continue;
        const std::uint16_t type = numbers.Word(entry + 2);
        if (numbers.DoubleWord(entry + 4) != 1 || (type != shortType && type != longType))
            return std::nullopt;
        // A number that fits lies in the entry itself, at its front.
        return type == shortType ? numbers.Word(entry + 8) : numbers.DoubleWord(entry + 8);
    }
    return std::nullopt;
}

Header::Header(Quorvex::StreamBuffer& buffer) : order(ReadByteOrder(buffer)) {
    const Numbers numbers(buffer, order);
    if (numbers.Word(2) != version)
        throw Quorvex::Exception("unknown tiff version");
    firstDirectory = numbers.DoubleWord(4);
}

std::uint16_t ReadOrientation(Quorvex::Stream& stream) {
    Quorvex::StreamBuffer buffer(stream.lock(static_cast<std::uint32_t>(stream.size())));
    const Header header(buffer);
    const std::uint32_t found =
        FindNumber(Numbers(buffer, header.order), header.firstDirectory, orientationTag).value_or(1);
    return static_cast<std::uint16_t>(found >= 1 && found <= 8 ? found : 1);
}

} // namespace ET::Img::Tif
