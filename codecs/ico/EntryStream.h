#pragma once

#include "data/Stream.h"

namespace ET::Img::Ico {

/// A part of a stream as a stream of its own, which reads only what it is asked for, and altogether no more than a
/// budget of bytes. The other stream must outlive it, and is left at any position.
class EntryStream final : public Quorvex::Stream {
public:
    /// Raises Exception with empty text where the other stream ends before the part does.
    EntryStream(Quorvex::Stream& file, std::uint32_t offset, std::uint32_t size, std::uint64_t& budget);

    std::uint64_t tell() const override { return m_position; }
    /// Raises Exception with empty text at the end of the part and of the budget.
    void read(void* destination, std::uint32_t byteCount) override;
    void seek(std::uint64_t position) override { m_position = position; }
    std::uint64_t size() const override { return m_size; }
    Quorvex::StreamLock lock(std::uint32_t byteCount) override { return {this, nullptr, byteCount}; }
    /// Always raises Exception with empty text: there is one budget.
    std::unique_ptr<Quorvex::Stream> Clone() const override;

private:
    Quorvex::Stream& m_file;
    std::uint32_t m_offset;
    std::uint32_t m_size;
    std::uint64_t& m_budget;
    std::uint64_t m_position = 0;
};

} // namespace ET::Img::Ico
