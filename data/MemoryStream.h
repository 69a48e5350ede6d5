#pragma once

#include "data/Stream.h"

namespace Quorvex {

/// A view of bytes that somebody else owns and that outlive the stream and all its locks. Positions have 32 bits.
class MemoryStream final : public Stream {
public:
    MemoryStream(const void* address, std::uint32_t byteCount)
        : Base(static_cast<const std::uint8_t*>(address)), Size(byteCount) {}

    /// The position widened with its sign from 32 bits: a caller that seeks back lands where it was.
    std::uint64_t tell() const override;
    /// Raises Exception without text where the bytes end before, and the position stays.
    void read(void* destination, std::uint32_t byteCount) override;
    /// Takes the low 32 bits, and any position: only reading there fails.
    void seek(std::uint64_t position) override { Current = static_cast<std::uint32_t>(position); }
    std::uint64_t size() const override { return Size; }
    /// The bytes in place, without a copy. Moves the position behind them; raises as read does.
    StreamLock lock(std::uint32_t byteCount) override;
    /// Always raises Exception, after a report under "MemoryStream::Clone": the memory has one view only.
    std::unique_ptr<Stream> Clone() const override;

private:
    const std::uint8_t* Take(std::uint32_t byteCount);

    std::uint32_t Current = 0;
    const std::uint8_t* Base;
    std::uint64_t Size;
};

} // namespace Quorvex
