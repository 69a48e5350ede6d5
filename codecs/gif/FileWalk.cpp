#include "codecs/gif/FileWalk.h"

#include "foundation/Exception.h"

#include <algorithm>
#include <limits>

namespace ET::Img::Gif {

namespace {

constexpr std::uint32_t signatureBytes = 6;
constexpr std::uint32_t screenBytes = 7;
constexpr std::uint8_t extension = 0x21, image = 0x2C, trailer = 0x3B;

/// The digit that tells 87a from 89a. The first three bytes may be anything.
char ReadVersion(Quorvex::Stream& stream) {
    char signature[signatureBytes];
    stream.read(signature, sizeof(signature));
    const char digit = signature[4];
    if (signature[3] != '8' || (digit != '7' && digit != '9') || signature[5] != 'a')
        throw Quorvex::Exception("unknown GIF version");
    return digit;
}

// Only now, as any other file may be huge. What lies beyond 4 GiB is out of reach.
Quorvex::StreamLock LockRest(Quorvex::Stream& stream) {
    constexpr std::uint64_t most = std::numeric_limits<std::uint32_t>::max();
    const std::uint64_t position = stream.tell(), size = stream.size();
    return stream.lock(static_cast<std::uint32_t>(std::min(most, size > position ? size - position : 0)));
}

} // namespace

FileWalk::FileWalk(Quorvex::Stream& stream) {
    stream.seek(0);
    const char version = ReadVersion(stream);
    m_file.Refill(LockRest(stream));
    const std::uint8_t packed = m_file.Take(screenBytes)[4];
    if ((packed & ColorTable::isThere) == 0)
        throw Quorvex::Exception(version == '7' ? "250 missing global color map" : "324 missing global color map");
    m_colors.ReadOver(m_file, packed);
}

bool FileWalk::Next() {
    while (true) {
        switch (m_file.ReadByte()) {
        case extension:
            m_file.ReadByte(); // Its label.
            SkipSubBlocks(m_file);
            break;
        case image:
            m_file.Seek(m_file.GetPosition() - 1);
            m_frame = ReadFrame(m_file, m_colors);
            return true;
        case trailer:
            return false;
        default:
            break;
        }
    }
}

} // namespace ET::Img::Gif
