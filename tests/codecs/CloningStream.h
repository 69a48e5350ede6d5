#pragma once

#include "data/Stream.h"
#include "foundation/Exception.h"

#include <memory>

/// A stream that can be cloned, and that remembers where it was asked to go.
class CloningStream final : public Quorvex::Stream {
public:
    explicit CloningStream(std::uint64_t position = 0) : m_position(position) {}

    std::uint64_t tell() const override { return m_position; }
    void read(void*, std::uint32_t) override { throw Quorvex::Exception(); }
    void seek(std::uint64_t position) override { m_position = position; }
    std::uint64_t size() const override { return 0x1234567890; }
    Quorvex::StreamLock lock(std::uint32_t) override { throw Quorvex::Exception(); }
    std::unique_ptr<Quorvex::Stream> Clone() const override { return std::make_unique<CloningStream>(m_position); }

private:
    std::uint64_t m_position;
};
