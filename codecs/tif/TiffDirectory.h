#pragma once

#include "data/StreamBuffer.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace ET::Img::Tif {

enum class ByteOrder { Little, Big };

/// The numbers of a TIFF file, in the order of its bytes, at any offset from its start (TIFF 6.0, section 2). Raises
/// Exception without text for a place beyond the end.
class Numbers {
public:
    Numbers(Quorvex::StreamBuffer& buffer, ByteOrder order) : m_buffer(buffer), m_order(order) {}

    std::uint16_t Word(std::uint64_t offset) const { return static_cast<std::uint16_t>(Read(offset, 2)); }
    std::uint32_t DoubleWord(std::uint64_t offset) const { return Read(offset, 4); }
    /// A number of 1, 2 or 4 bytes.
    std::uint32_t Read(std::uint64_t offset, std::uint32_t byteCount) const;
    std::span<const std::uint8_t> Bytes(std::uint64_t offset, std::uint64_t byteCount) const;
    std::uint32_t GetSize() const { return m_buffer.GetSize(); }
    ByteOrder GetOrder() const { return m_order; }

private:
    Quorvex::StreamBuffer& m_buffer;
    ByteOrder m_order;
};

/// So many bytes tell a TIFF file from others.
inline constexpr std::uint32_t markBytes = 4;

/// Checks those of a block from the start of a file. Raises Exception "invalid byte order" and "unknown tiff version",
/// and without text where the block has too few of them.
ByteOrder ReadMark(Quorvex::StreamBuffer& buffer);

/// Reads the head of a file and gives its first directory. Raises as ReadMark does.
struct Header {
    explicit Header(Quorvex::StreamBuffer& buffer);
    ByteOrder order;
    std::uint32_t firstDirectory;
};

/// The tags of one image (TIFF 6.0, section 2). Values are looked up when they are asked for: one beyond the end of the
/// file raises Exception without text then, and one that nobody needs does no harm. A tag whose values are of another
/// kind than the one asked for counts as missing. Lives no longer than the bytes of the file.
class Directory {
public:
    /// Raises Exception without text where the file ends before the last entry does.
    Directory(const Numbers& numbers, std::uint32_t offset);

    /// Whole numbers of 8, 16 and 32 bits; empty where the tag is missing.
    std::vector<std::uint32_t> Integers(std::uint16_t tag) const;
    /// The first of them.
    std::optional<std::uint32_t> Integer(std::uint16_t tag) const;
    /// Not a number where the denominator is 0.
    std::optional<double> Rational(std::uint16_t tag) const;
    /// Bytes without a meaning of their own.
    std::span<const std::uint8_t> Bytes(std::uint16_t tag) const;
    const Numbers& GetNumbers() const { return m_numbers; }

private:
    struct Entry {
        std::uint16_t tag;
        std::uint16_t type;
        std::uint32_t count;
        std::uint64_t values; ///< Where they lie, from the start of the file.
    };
    const Entry* Find(std::uint16_t tag) const;

    Numbers m_numbers;
    std::vector<Entry> m_entries;
};

/// What the tag Orientation says, 1 to 8; 1 where there is none or it says anything else.
std::uint16_t OrientationOf(const Directory& directory);

/// The same of the first directory of a file. Raises as Header and Directory do.
std::uint16_t ReadOrientation(Quorvex::Stream& stream);

/// Where the directories of a file lie. The first counts wherever it is; the chain ends at an offset of 0, at one
/// beyond the file, and at one that was there before.
std::vector<std::uint32_t> WalkDirectories(const Numbers& numbers, std::uint32_t first);

} // namespace ET::Img::Tif
