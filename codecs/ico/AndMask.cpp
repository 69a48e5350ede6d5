#include "codecs/ico/AndMask.h"

#include "data/StreamBuffer.h"

#include <limits>

namespace ET::Img::Ico {

using Quorvex::Data::ColorTypeEnum;
using Quorvex::Data::LockMode;

namespace {

/// Whether any pixel is less than opaque.
template <class Channel>
bool Apply(const std::uint8_t* mask, std::uint32_t rowBytes,
           const Quorvex::Data::Lock<Quorvex::Data::ColorBGRA<Channel>>& lock) {
    constexpr Channel opaque = std::numeric_limits<Channel>::max();
    bool isTransparent = false;
    for (std::uint32_t y = lock.Height; y-- > 0; mask += rowBytes) {
        auto* const row = lock.Row(y);
        for (std::uint32_t x = 0; x < lock.Width; ++x) {
            if ((mask[x / 8] >> (7 - x % 8) & 1) != 0)
                row[x].alpha = 0;
            else if (row[x].alpha == 0)
                row[x].alpha = opaque;
            isTransparent |= row[x].alpha != opaque;
        }
    }
    return isTransparent;
}

} // namespace

bool ReadMask(Quorvex::MemoryStream& stream, Quorvex::Data::ImageBase& image) {
    const bool isWide = image.ColorType == ColorTypeEnum::BGRAUInt16;
    if (!isWide && image.ColorType != ColorTypeEnum::BGRAUInt8)
        return false;
    const std::uint64_t rowBytes = (std::uint64_t(image.GetWidth()) + 31) / 32 * 4;
    const std::uint64_t maskBytes = rowBytes * image.GetHeight();
    // The stream tells positions of more than 31 bits as negative numbers.
    const std::uint64_t position = static_cast<std::uint32_t>(stream.tell());
    if (position > stream.size() || maskBytes > stream.size() - position)
        return false;
    const Quorvex::StreamBuffer buffer(stream.lock(static_cast<std::uint32_t>(maskBytes)));
    const std::uint8_t* const mask = buffer.GetData();
    const auto stride = static_cast<std::uint32_t>(rowBytes);
    const bool isTransparent = isWide ? Apply(mask, stride, image.LockBGRAUInt16(LockMode::ReadWrite))
                                      : Apply(mask, stride, image.LockBGRAUInt8(LockMode::ReadWrite));
    image.HasAlpha = isTransparent ? 1 : 0;
    return true;
}

} // namespace ET::Img::Ico
