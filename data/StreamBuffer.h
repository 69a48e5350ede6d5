#pragma once

#include "data/MemoryStream.h"

namespace Quorvex {

/// A block of a stream as bytes to walk through: one large read from a file, and no copy at all from memory. Bytes that
/// lie in memory already are borrowed and must outlive the buffer; others are read into a block of its own, which
/// serves again for the next block of the same size or less. Every access is checked against the block's end.
class StreamBuffer {
public:
    /// Empty.
    StreamBuffer() = default;
    /// Raises Exception without text where the stream ends before the block does, and std::bad_alloc. Memory is taken
    /// only for what the stream can deliver: a header may ask for gigabytes that its file does not have.
    explicit StreamBuffer(const StreamLock& lock) { Refill(lock); }
    StreamBuffer(const StreamBuffer&) = delete;
    StreamBuffer& operator=(const StreamBuffer&) = delete;

    /// Takes another block in place of the present one, from its start; row after row without allocation. Raises as
    /// construction does, and the buffer is empty then.
    void Refill(const StreamLock& lock);

    std::uint32_t GetPosition() const { return Position; }
    std::uint32_t GetSize() const { return Size; }
    std::uint32_t GetRemaining() const { return Size - Position; }
    /// The size of a private copy, 0 where the bytes are borrowed from the stream.
    std::uint32_t GetOwnedSize() const { return OwnedSize; }
    const std::uint8_t* GetData() const { return Data; }

    /// The next byte. Raises Exception without text at the end of the block.
    std::uint8_t ReadByte() {
        if (Position == Size)
            RaiseEnd();
        return Data[Position++];
    }
    /// The next bytes, in place; the position moves behind them. Raises Exception without text where fewer are left.
    const std::uint8_t* Take(std::uint32_t byteCount) {
        if (byteCount > Size - Position)
            RaiseEnd();
        const std::uint8_t* const bytes = Data + Position;
        Position += byteCount;
        return bytes;
    }
    /// Moves to a place of the block; its end is one. Raises Exception without text beyond.
    void Seek(std::uint32_t position) {
        if (position > Size)
            RaiseEnd();
        Position = position;
    }

    /// A stream over the bytes from the position to the end of the block, which must outlive it. Raises Exception
    /// without text where none are left.
    MemoryStream GetRemainingAsStream() const;

private:
    [[noreturn]] static void RaiseEnd();

    std::uint32_t Position = 0;
    std::uint32_t Size = 0;
    std::uint32_t OwnedSize = 0;
    const std::uint8_t* Data = nullptr;
    std::unique_ptr<std::uint8_t[]> Block;
    std::uint32_t BlockSize = 0;
};

} // namespace Quorvex
