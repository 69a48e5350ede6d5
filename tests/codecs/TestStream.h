#pragma once

#include "data/Stream.h"
#include "foundation/Exception.h"
#include "foundation/SharedPtr.h"

#include <cstring>
#include <vector>

/// Bytes of its own as a stream in one of two manners: as a file, which copies, or as memory, which hands out
/// addresses. The block is exactly as large as the bytes, so that the sanitizer sees a read past its end.
class TestStream final : public Quorvex::Stream {
public:
    enum class Manner { File, Memory };

    explicit TestStream(std::vector<std::uint8_t> bytes, Manner manner = Manner::File)
        : m_bytes(bytes.begin(), bytes.end()), m_manner(manner) {}

    std::uint64_t tell() const override { return m_position; }
    std::uint64_t size() const override { return m_bytes.size(); }
    void seek(std::uint64_t position) override { m_position = position; }

    void read(void* destination, std::uint32_t byteCount) override {
        const std::uint8_t* const source = Take(byteCount);
        if (byteCount > 0)
            std::memcpy(destination, source, byteCount);
        bytesRead += byteCount;
    }

    Quorvex::StreamLock lock(std::uint32_t byteCount) override {
        return {this, m_manner == Manner::Memory ? Take(byteCount) : nullptr, byteCount};
    }

    std::unique_ptr<Quorvex::Stream> Clone() const override { throw Quorvex::Exception(); }

    std::uint64_t bytesRead = 0;

private:
    const std::uint8_t* Take(std::uint32_t byteCount) {
        if (m_position > m_bytes.size() || byteCount > m_bytes.size() - m_position)
            throw Quorvex::Exception();
        m_position += byteCount;
        return m_bytes.data() + m_position - byteCount;
    }

    std::vector<std::uint8_t> m_bytes;
    Manner m_manner;
    std::uint64_t m_position = 0;
};
