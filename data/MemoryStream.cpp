#include "data/MemoryStream.h"

#include "foundation/Exception.h"
#include "foundation/Report.h"

#include <cstring>

namespace Quorvex {

std::uint64_t MemoryStream::tell() const {
    return static_cast<std::uint64_t>(std::int64_t{static_cast<std::int32_t>(Current)});
}

void MemoryStream::read(void* destination, std::uint32_t byteCount) {
    const std::uint8_t* const source = Take(byteCount);
    if (byteCount != 0)
        std::memcpy(destination, source, byteCount);
}

StreamLock MemoryStream::lock(std::uint32_t byteCount) {
    return {this, Take(byteCount), byteCount};
}

std::unique_ptr<Stream> MemoryStream::Clone() const {
    ReportProblem(__LINE__, "MemoryStream::Clone");
    throw Exception();
}

// A file that lies about its sizes must not make a decoder read foreign memory.
const std::uint8_t* MemoryStream::Take(std::uint32_t byteCount) {
    const std::uint64_t left = Current < Size ? Size - Current : 0;
    if (byteCount > left)
        throw Exception();
    // Where nothing is left, the position may lie outside, and no byte of it is taken.
    const std::uint8_t* const address = left != 0 ? Base + Current : Base;
    Current += byteCount;
    return address;
}

} // namespace Quorvex
