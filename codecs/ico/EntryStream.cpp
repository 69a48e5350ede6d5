#include "codecs/ico/EntryStream.h"

#include "foundation/Exception.h"

namespace ET::Img::Ico {

EntryStream::EntryStream(Quorvex::Stream& file, std::uint32_t offset, std::uint32_t size, std::uint64_t& budget)
    : m_file(file), m_offset(offset), m_size(size), m_budget(budget) {
    if (std::uint64_t(offset) + size > file.size())
        throw Quorvex::Exception();
}

void EntryStream::read(void* destination, std::uint32_t byteCount) {
    const std::uint64_t left = m_position < m_size ? m_size - m_position : 0;
    if (byteCount > left || byteCount > m_budget)
        throw Quorvex::Exception();
    m_file.seek(m_offset + m_position);
    m_file.read(destination, byteCount);
    m_position += byteCount;
    m_budget -= byteCount;
}

std::unique_ptr<Quorvex::Stream> EntryStream::Clone() const {
    throw Quorvex::Exception();
}

} // namespace ET::Img::Ico
