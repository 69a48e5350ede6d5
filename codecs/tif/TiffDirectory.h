#pragma once

#include "data/StreamBuffer.h"

#include <cstdint>
#include <optional>

namespace ET::Img::Tif {

enum class ByteOrder { Little, Big };

/// The numbers of a TIFF file, in the order of its bytes, at any offset from its start (TIFF 6.0, section 2). Raises
/// Exception without text for a place beyond the end.
class Numbers {
public:
    Numbers(Quorvex::StreamBuffer& buffer, ByteOrder order) : m_buffer(buffer), m_order(order) {}

    std::uint16_t Word(std::uint64_t offset) const;
    std::uint32_t DoubleWord(std::uint64_t offset) const;

private:
    std::uint32_t Read(std::uint64_t offset, std::uint32_t byteCount) const;

    Quorvex::StreamBuffer& m_buffer;
    ByteOrder m_order;
};

/// An entry of a directory that holds a single unsigned number of 16 or 32 bits.
std::optional<std::uint32_t> FindNumber(const Numbers& numbers, std::uint32_t directory, std::uint16_t tag);

/// Reads the head of a file and gives its first directory. Raises Exception "invalid byte order" and "unknown tiff
/// version", and without text where the file ends too early.
struct Header {
    explicit Header(Quorvex::StreamBuffer& buffer);
    ByteOrder order;
    std::uint32_t firstDirectory;
};

/// What the tag Orientation of the first directory says, 1 to 8; 1 where there is none or it says anything else.
/// Raises as Header does.
std::uint16_t ReadOrientation(Quorvex::Stream& stream);

} // namespace ET::Img::Tif
