#pragma once

#include <cstdint>
#include <memory>

namespace Quorvex {

class Stream;

/// The next bytes of a stream: where they lie already, or null when they must be read. Valid as long as the stream and,
/// where it views memory, that memory; StreamBuffer turns it into bytes.
struct StreamLock {
    Stream* Source = nullptr;
    const std::uint8_t* Address = nullptr;
    std::uint32_t Size = 0;
};

/// What every decoder reads from: bytes with a 64-bit position and no buffering of its own. A stream belongs to one
/// thread at a time. Failures raise Exception.
class Stream {
public:
    virtual ~Stream() = default;
    /// Bytes from the start.
    virtual std::uint64_t tell() const = 0;
    /// Reads exactly that many bytes or raises; there is no partial result.
    virtual void read(void* destination, std::uint32_t byteCount) = 0;
    /// Absolute position from the start, in bytes.
    virtual void seek(std::uint64_t position) = 0;
    /// Total bytes.
    virtual std::uint64_t size() const = 0;
    /// The next bytes, to be walked in memory. A stream over memory moves its position behind them at once, a file when
    /// they are read.
    virtual StreamLock lock(std::uint32_t byteCount) = 0;
    /// A new, independent stream over the same data at the same position.
    virtual std::unique_ptr<Stream> Clone() const = 0;
};

} // namespace Quorvex
