#pragma once

#include "data/MemoryStream.h"

/// Copies where a stream over memory would hand out addresses, as a file does.
class CopyingStream final : public Quorvex::Stream {
public:
    CopyingStream(const std::uint8_t* data, std::size_t size) : m_memory(data, static_cast<std::uint32_t>(size)) {}

    std::uint64_t tell() const override { return m_memory.tell(); }
    void read(void* destination, std::uint32_t byteCount) override { m_memory.read(destination, byteCount); }
    void seek(std::uint64_t position) override { m_memory.seek(position); }
    std::uint64_t size() const override { return m_memory.size(); }
    Quorvex::StreamLock lock(std::uint32_t byteCount) override { return {this, nullptr, byteCount}; }
    std::unique_ptr<Quorvex::Stream> Clone() const override { return nullptr; }

private:
    Quorvex::MemoryStream m_memory;
};
