#include "codecs/tif/TiffDirectory.h"

#include "codecs/tif/Tags.h"
#include "foundation/Exception.h"

#include <algorithm>
#include <bit>
#include <limits>

namespace ET::Img::Tif {

namespace {

constexpr std::uint16_t version = 42;
constexpr std::uint32_t entryBytes = 12;

/// The types of values, as TIFF 6.0 numbers them, and the offset of a directory as its first supplement does.
enum Type : std::uint16_t {
    Byte = 1,
    Ascii,
    Short,
    Long,
    Rational,
    SByte,
    Undefined,
    SShort,
    SLong,
    SRational,
    Ifd = 13
};

std::uint32_t BytesOf(std::uint16_t type) {
    switch (type) {
    case Byte:
    case Ascii:
    case SByte:
    case Undefined:
        return 1;
    case Short:
    case SShort:
        return 2;
    case Long:
    case SLong:
    case Ifd:
        return 4;
    case Rational:
    case SRational:
        return 8;
    default:
        return 0;
    }
}

bool IsInteger(std::uint16_t type) {
    return type == Byte || type == Short || type == Long || type == SByte || type == SShort || type == SLong ||
           type == Ifd;
}

ByteOrder ReadByteOrder(Quorvex::StreamBuffer& buffer) {
    const std::uint8_t* const mark = buffer.Take(2);
    if (mark[0] == 'I' && mark[1] == 'I')
        return ByteOrder::Little;
    if (mark[0] == 'M' && mark[1] == 'M')
        return ByteOrder::Big;
    throw Quorvex::Exception("invalid byte order");
}

/// Where the directory behind this one lies; 0 where there is none, and where the file ends before it.
std::uint32_t NextDirectory(const Numbers& numbers, std::uint32_t directory) {
    const auto holds = [&](std::uint64_t offset, std::uint32_t bytes) { return offset + bytes <= numbers.GetSize(); };
    if (!holds(directory, 2))
        return 0;
    const std::uint64_t link = std::uint64_t(directory) + 2 + std::uint64_t(numbers.Word(directory)) * entryBytes;
    const std::uint32_t next = holds(link, 4) ? numbers.DoubleWord(link) : 0;
    return holds(next, 2) ? next : 0;
}

} // namespace

std::span<const std::uint8_t> Numbers::Bytes(std::uint64_t offset, std::uint64_t byteCount) const {
    if (offset > m_buffer.GetSize() || byteCount > m_buffer.GetSize() - offset)
        throw Quorvex::Exception();
    return {m_buffer.GetData() + offset, static_cast<std::size_t>(byteCount)};
}

std::uint32_t Numbers::Read(std::uint64_t offset, std::uint32_t byteCount) const {
    const std::span<const std::uint8_t> bytes = Bytes(offset, byteCount);
    std::uint32_t number = 0;
    for (std::uint32_t i = 0; i < byteCount; ++i)
        number = number << 8 | bytes[m_order == ByteOrder::Big ? i : byteCount - 1 - i];
    return number;
}

ByteOrder ReadMark(Quorvex::StreamBuffer& buffer) {
    const ByteOrder order = ReadByteOrder(buffer);
    if (Numbers(buffer, order).Word(2) != version)
        throw Quorvex::Exception("unknown tiff version");
    return order;
}

Header::Header(Quorvex::StreamBuffer& buffer)
    : order(ReadMark(buffer)), firstDirectory(Numbers(buffer, order).DoubleWord(4)) {}

Directory::Directory(const Numbers& numbers, std::uint32_t offset) : m_numbers(numbers) {
    const std::uint32_t count = numbers.Word(offset);
    numbers.Bytes(std::uint64_t(offset) + 2, std::uint64_t(count) * entryBytes);
    m_entries.reserve(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint64_t entry = std::uint64_t(offset) + 2 + std::uint64_t(i) * entryBytes;
        Entry read{numbers.Word(entry), numbers.Word(entry + 2), numbers.DoubleWord(entry + 4), entry + 8};
        // Values that fit lie in the entry itself, at its end.
        if (std::uint64_t(read.count) * BytesOf(read.type) > 4)
            read.values = numbers.DoubleWord(entry + 8);
        m_entries.push_back(read);
    }
}

const Directory::Entry* Directory::Find(std::uint16_t tag) const {
    const auto found = std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& e) { return e.tag == tag; });
    return found != m_entries.end() && found->count != 0 ? &*found : nullptr;
}

std::vector<std::uint32_t> Directory::Integers(std::uint16_t tag) const {
    std::vector<std::uint32_t> values;
    const Entry* const entry = Find(tag);
    if (entry == nullptr || !IsInteger(entry->type))
        return values;
    const std::uint32_t bytes = BytesOf(entry->type);
    m_numbers.Bytes(entry->values, std::uint64_t(entry->count) * bytes);
    values.resize(entry->count);
    for (std::uint32_t i = 0; i < entry->count; ++i)
        values[i] = m_numbers.Read(entry->values + std::uint64_t(i) * bytes, bytes);
    return values;
}

std::optional<std::uint32_t> Directory::Integer(std::uint16_t tag) const {
    const Entry* const entry = Find(tag);
    if (entry == nullptr || !IsInteger(entry->type))
        return std::nullopt;
    return m_numbers.Read(entry->values, BytesOf(entry->type));
}

std::optional<double> Directory::Rational(std::uint16_t tag) const {
    const Entry* const entry = Find(tag);
    if (entry == nullptr || (entry->type != Type::Rational && entry->type != SRational))
        return std::nullopt;
    const std::uint32_t numerator = m_numbers.DoubleWord(entry->values);
    const std::uint32_t denominator = m_numbers.DoubleWord(entry->values + 4);
    if (denominator == 0)
        return std::numeric_limits<double>::quiet_NaN();
    if (entry->type == SRational)
        return double(static_cast<std::int32_t>(numerator)) / double(static_cast<std::int32_t>(denominator));
    return double(numerator) / double(denominator);
}

std::span<const std::uint8_t> Directory::Bytes(std::uint16_t tag) const {
    const Entry* const entry = Find(tag);
    if (entry == nullptr || BytesOf(entry->type) != 1)
        return {};
    return m_numbers.Bytes(entry->values, entry->count);
}

std::uint16_t OrientationOf(const Directory& directory) {
    const std::vector<std::uint32_t> values = directory.Integers(Tag::Orientation);
    return values.size() == 1 && values[0] >= 1 && values[0] <= 8 ? static_cast<std::uint16_t>(values[0]) : 1;
}

std::uint16_t ReadOrientation(Quorvex::Stream& stream) {
    Quorvex::StreamBuffer buffer(stream.lock(static_cast<std::uint32_t>(stream.size())));
    const Header header(buffer);
    // The offset 0 stands for no directory.
    if (header.firstDirectory == 0)
        return 1;
    return OrientationOf(Directory(Numbers(buffer, header.order), header.firstDirectory));
}

// Brent's search for a cycle: a mark, which moves ahead at the powers of two, is met again by a chain that goes round.
std::vector<std::uint32_t> WalkDirectories(const Numbers& numbers, std::uint32_t first) {
    if (first == 0)
        return {};
    std::vector<std::uint32_t> directories{first};
    std::size_t mark = 0;
    for (std::uint32_t next = NextDirectory(numbers, first); next != 0; next = NextDirectory(numbers, next)) {
        if (next == directories[mark]) {
            const std::size_t length = directories.size() - mark;
            std::size_t before = 0;
            while (before < mark && directories[before] != directories[before + length])
                ++before;
            directories.resize(before + length);
            return directories;
        }
        if (std::has_single_bit(directories.size()))
            mark = directories.size();
        directories.push_back(next);
    }
    return directories;
}

} // namespace ET::Img::Tif
