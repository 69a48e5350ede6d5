#include "video/software/OffscreenBuffer.h"

#include <algorithm>

namespace Quorvex::Platform::Video::Software {

OffscreenBuffer::OffscreenBuffer(Context* owner, SharedPtr<Context> sharedContext, std::uint32_t width,
                                 std::uint32_t height)
    : Video::OffscreenBuffer(owner, std::move(sharedContext)), image(owner->CreateImageBGRAUInt8(width, height, 0, 0)),
      bits(image->LockBGRAUInt8(Data::LockMode::ReadWrite).Data) {
    // The image is no more than the memory here: rows lie closer than its own row length.
    std::fill_n(bits, static_cast<std::size_t>(width) * height, Data::ColorBGRA<std::uint8_t>{});
}

} // namespace Quorvex::Platform::Video::Software
