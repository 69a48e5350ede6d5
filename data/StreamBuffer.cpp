#include "data/StreamBuffer.h"

#include "foundation/Exception.h"

namespace Quorvex {

void StreamBuffer::Refill(const StreamLock& lock) {
    Position = Size = OwnedSize = 0;
    Data = nullptr;
    if (lock.Address != nullptr) {
        Data = lock.Address;
        Size = lock.Size;
        return;
    }
    if (lock.Size > BlockSize) {
        const std::uint64_t total = lock.Source->size();
        const std::uint64_t position = lock.Source->tell();
        if (position > total || lock.Size > total - position)
            RaiseEnd();
        Block.reset();
        BlockSize = 0;
        // The bytes are about to be overwritten: clearing a block as large as the file would be a pass for nothing.
        Block.reset(new std::uint8_t[lock.Size]);
        BlockSize = lock.Size;
    }
    lock.Source->read(Block.get(), lock.Size);
    Data = Block.get();
    Size = OwnedSize = lock.Size;
}

MemoryStream StreamBuffer::GetRemainingAsStream() const {
    if (Position >= Size)
        throw Exception();
    return MemoryStream(Data + Position, Size - Position);
}

void StreamBuffer::RaiseEnd() {
    throw Exception();
}

} // namespace Quorvex
